// SPDX-License-Identifier: Apache-2.0
// A file that is not in memory, as a console that is redirected to a disk.
#pragma once

#include "common/unique_fd.hpp"

#include <string>

namespace wivex::test_support {

/// What was written to the file behind `fd`, wherever its position is.
std::string content_of(int fd);

/// A file beside the test program, with no name any more.
class DiskFile {
public:
    DiskFile();

    int fd() const {
        return fd_.get();
    }

    /// False where the test program itself stands in memory, or where there is no room beside it.
    bool may_hang() const;

    std::string content() const {
        return content_of(fd_.get());
    }

    /// The same file, opened with these flags.
    UniqueFd open_again(int flags) const;

private:
    UniqueFd fd_;
};

} // namespace wivex::test_support
