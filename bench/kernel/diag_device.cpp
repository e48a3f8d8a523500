// SPDX-License-Identifier: Apache-2.0
#include "kernel/diag_device.hpp"

#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace bench {

namespace {

namespace fs = std::filesystem;

constexpr const char* device_path = "/proc/cld/athdiagpfs";

// Process numbers begin at 1 in the private namespace, and a rehearsal is short.
constexpr int linked_processes = 9999;

void check(int result, const char* what) {
    if (result < 0) {
        throw std::system_error(errno, std::generic_category(), what);
    }
}

void replace_proc_by_links() {
    const int proc = open_tree(AT_FDCWD, "/proc", OPEN_TREE_CLONE | AT_RECURSIVE);
    check(proc, "open_tree /proc");
    check(mount("none", "/proc", "tmpfs", 0, "mode=755"), "mount /proc");
    fs::create_directory("/proc/kernel");
    check(move_mount(proc, "", AT_FDCWD, "/proc/kernel", MOVE_MOUNT_F_EMPTY_PATH), "move_mount");
    close(proc);
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc/kernel")) {
        const std::string name = entry.path().filename();
        if (std::atoi(name.c_str()) == 0) {
            fs::create_symlink("kernel/" + name, "/proc/" + name);
        }
    }
    for (int process = 1; process <= linked_processes; ++process) {
        const std::string name = std::to_string(process);
        fs::create_symlink("kernel/" + name, "/proc/" + name);
    }
}

void write_word(std::ofstream& memory, std::uint32_t address, std::uint32_t word) {
    memory.seekp(address);
    for (unsigned shift = 0; shift < 32; shift += 8) {
        memory.put(static_cast<char>(word >> shift & 0xff));
    }
}

} // namespace

void add_diag_device(const ChipScript& script) {
    replace_proc_by_links();
    fs::create_directory("/proc/cld");
    std::ofstream memory(device_path, std::ios::binary);
    for (const auto& [address, word] : script.words) {
        write_word(memory, address, word);
    }
    memory.close();
    if (script.memory_end) {
        fs::resize_file(device_path, *script.memory_end);
    }
}

} // namespace bench
