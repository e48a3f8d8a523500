// SPDX-License-Identifier: Apache-2.0
#include "disk_file.hpp"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>

namespace wivex::test_support {

std::string content_of(int fd) {
    std::string text;
    std::array<char, 4096> part{};
    ssize_t length = 0;
    while ((length = pread(fd, part.data(), part.size(), static_cast<off_t>(text.size()))) > 0) {
        text.append(part.data(), static_cast<std::size_t>(length));
    }
    return text;
}

DiskFile::DiskFile() {
    const auto program = std::filesystem::read_symlink("/proc/self/exe");
    std::string path = program.parent_path() / "console.XXXXXX";
    fd_ = UniqueFd(mkstemp(path.data()));
    unlink(path.c_str());
}

bool DiskFile::may_hang() const {
    struct statfs system {};
    return fstatfs(fd_.get(), &system) == 0 && system.f_type != TMPFS_MAGIC;
}

UniqueFd DiskFile::open_again(int flags) const {
    const std::string path = "/proc/self/fd/" + std::to_string(fd_.get());
    return UniqueFd(open(path.c_str(), flags | O_CLOEXEC));
}

} // namespace wivex::test_support
