// SPDX-License-Identifier: Apache-2.0
#include "diag/access_points.hpp"

namespace wivex {

ScanTable& scan_table() {
    static ScanTable table;
    return table;
}

} // namespace wivex
