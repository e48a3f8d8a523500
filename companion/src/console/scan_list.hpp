// SPDX-License-Identifier: Apache-2.0
// The names of access points on the console of a scan. They are anybody's: "SCAN FAIL" may be one.
// The tool says how many follow, and those with the prefix begin with it.
#pragma once

#include "console/finding.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace wivex::report {

class ScanList {
public:
    /// A new run: nothing was listed yet.
    void forget() {
        *this = {};
    }
    /// A new iteration: no name follows.
    void close() {
        to_come_ = 0;
        in_matches_ = false;
    }
    /// So many names follow.
    void expect(long count);
    /// Names with this prefix follow.
    void expect_matches(std::string_view prefix);

    /// The name that `line` is, if it is one.
    std::optional<ListedName> take(std::string_view line);

private:
    long to_come_ = 0;
    long known_ = 0;
    long listed_ = 0;
    std::string prefix_;
    bool in_matches_ = false;
};

} // namespace wivex::report
