// SPDX-License-Identifier: Apache-2.0
#include "host_programs.hpp"

#include <sys/stat.h>

#include <cstdlib>

namespace wivex::test_support {

HostPrograms::HostPrograms() {
    ::setenv("PATH", directory_.path().c_str(), 1);
}

void HostPrograms::provide(const std::string& name, const std::string& behaviour) const {
    directory_.program(name, "#!/bin/sh\necho \"" + name + " $*\" >>" + (directory_ / "log") +
                                 "\n" + behaviour + "\n");
}

void HostPrograms::let_anybody_in() const {
    ::chmod(directory_.path().c_str(), 0777);
}

std::string HostPrograms::calls() const {
    return read_file(directory_ / "log");
}

} // namespace wivex::test_support
