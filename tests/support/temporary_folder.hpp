// SPDX-License-Identifier: Apache-2.0
// A folder that goes away again with all it holds; for tests of every kind.
#pragma once

#include <stdlib.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace test_tools {

class TemporaryFolder {
public:
    /// `name` and some letters more are its name under /tmp. Ends the program when it cannot be
    /// made.
    explicit TemporaryFolder(const std::string& name) : path_("/tmp/" + name + "-XXXXXX") {
        if (mkdtemp(path_.data()) == nullptr) {
            std::perror("mkdtemp");
            std::abort();
        }
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::string& path() const {
        return path_;
    }

private:
    std::string path_;
};

} // namespace test_tools
