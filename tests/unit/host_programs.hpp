// SPDX-License-Identifier: Apache-2.0
// The programs that a shell finds: those of a test and no others. Each notes how it was called.
#pragma once

#include "scratch.hpp"

#include <string>

namespace wivex::test_support {

/// Changes the search path, which the fixture puts back.
class HostPrograms {
public:
    HostPrograms();

    /// `behaviour` is shell text.
    void provide(const std::string& name, const std::string& behaviour = "exit 0") const;

    /// A line for each call so far: the program's name and its arguments.
    std::string calls() const;

    /// Lets processes without rights find the programs too.
    void let_anybody_in() const;

    /// Where a program of this name stands.
    std::string path_of(const std::string& name) const {
        return directory_ / name;
    }

private:
    ScratchDirectory directory_;
};

} // namespace wivex::test_support
