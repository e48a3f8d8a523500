// SPDX-License-Identifier: Apache-2.0
#include "world/device_root.hpp"

#include "language/conventions.hpp"
#include "language/files.hpp"
#include "world/namespaces.hpp"
#include "world/tool_start.hpp"
#include "world/usb_devices.hpp"

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>

namespace bench {

namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 8> private_folders{"proc", "sys", "tmp", "root",
                                                          "lib",  "run", "mnt", "bench"};
constexpr std::array<const char*, 2> program_folders{"/usr/sbin", "/usr/bin"};
constexpr const char* usual_path = "/usr/sbin:/usr/bin:/sbin:/bin";
constexpr const char* chosen_programs = "/bench/bin";

bool is_private(const std::string& name) {
    return std::find(private_folders.begin(), private_folders.end(), name) != private_folders.end();
}

void bind_mount(const std::string& from, const std::string& to) {
    mount(from.c_str(), to.c_str(), nullptr, MS_BIND | MS_REC, nullptr);
}

void bind_mount_file(const std::string& from, const std::string& to) {
    write_file(to, "");
    bind_mount(from, to);
}

void mount_empty(const char* folder) {
    mount("none", folder, "tmpfs", 0, nullptr);
}

// Everything of the machine's root that is not private appears under its own name.
void share_machine(const std::string& root) {
    for (const auto& entry : fs::directory_iterator("/")) {
        const std::string name = entry.path().filename();
        const fs::path target = fs::path(root) / name;
        if (is_private(name)) {
            continue;
        }
        if (entry.is_symlink()) {
            fs::create_symlink(fs::read_symlink(entry.path()), target);
        } else if (entry.is_directory()) {
            fs::create_directory(target);
            bind_mount(entry.path(), target);
        }
    }
}

// /lib must take a folder of its own, /lib/modules/wifi, and is often a link.
void share_libraries(const std::string& root) {
    fs::create_directories(root + "/bench/lib");
    bind_mount(fs::canonical("/lib"), root + "/bench/lib");
    fs::create_directories(root + "/lib/modules/wifi");
    for (const auto& entry : fs::directory_iterator("/lib")) {
        const std::string name = entry.path().filename();
        if (name != "modules") {
            fs::create_symlink(fs::path("/bench/lib") / name, fs::path(root) / "lib" / name);
        }
    }
}

void create_private_folders(const std::string& root) {
    for (const std::string_view name : private_folders) {
        fs::create_directories(root + "/" + std::string(name));
    }
    fs::permissions(root + "/tmp", fs::perms::all | fs::perms::sticky_bit);
}

bool pivot_to(const std::string& root) {
    const std::string old = root + "/bench/old";
    fs::create_directories(old);
    if (syscall(SYS_pivot_root, root.c_str(), old.c_str()) != 0 || chdir("/") != 0) {
        return false;
    }
    return umount2("/bench/old", MNT_DETACH) == 0;
}

// A process that writes /etc/resolv.conf must not write the machine's.
void hide_resolver_settings(const std::string& root) {
    write_file(root + "/bench/resolv.conf", "");
    const fs::path settings = root + "/etc/resolv.conf";
    if (fs::exists(settings) && !fs::is_symlink(settings)) {
        bind_mount(root + "/bench/resolv.conf", settings);
    }
}

void mount_kernel_files(const Scenario& scenario) {
    mount("proc", "/proc", "proc", 0, nullptr);
    mount_empty("/proc/bus");
    fs::create_directories("/proc/bus/usb");
    write_file("/proc/bus/usb/devices", usb_device_list(scenario.module));
    mount("sysfs", "/sys", "sysfs", 0, nullptr);
    mount_empty("/sys/module");
    mount_empty("/sys/kernel/debug");
}

void install_configuration(const std::string& configuration) {
    for (const char* name : {"wivex.cfg", "wivex_qca.cfg", "wivex_softap.cfg"}) {
        write_file(std::string("/lib/modules/wifi/") + name, configuration);
    }
}

// The settings that the tool's own DHCP server is started with when it owns a group.
void install_dhcp_settings() {
    write_file("/tmp/udhcpd.conf", "start 192.168.49.100\nend 192.168.49.110\ninterface wlan0\n"
                                   "lease_file /tmp/udhcpd.leases\npidfile /tmp/udhcpd.pid\n");
    write_file("/tmp/udhcpd.leases", "");
}

bool is_hidden(const Scenario& scenario, const std::string& name) {
    const auto& hidden = scenario.hidden_programs;
    return std::find(hidden.begin(), hidden.end(), name) != hidden.end();
}

void link_programs(const Scenario& scenario) {
    for (const char* folder : program_folders) {
        for (const auto& entry : fs::directory_iterator(folder)) {
            const std::string name = entry.path().filename();
            std::error_code exists;
            if (!is_hidden(scenario, name)) {
                fs::create_symlink(entry.path(), std::string(chosen_programs) + "/" + name, exists);
            }
        }
    }
}

void install_programs(const Scenario& scenario) {
    if (scenario.programs.empty() && scenario.hidden_programs.empty()) {
        return;
    }
    fs::create_directories(chosen_programs);
    for (const auto& [name, script] : scenario.programs) {
        const std::string path = std::string(chosen_programs) + "/" + name;
        write_file(path, "#!/bin/sh\n" + script + "\n");
        fs::permissions(path,
                        fs::perms::owner_all | fs::perms::group_exec | fs::perms::others_exec);
    }
    if (!scenario.hidden_programs.empty()) {
        link_programs(scenario);
    }
}

void prepare_folder(const std::string& path, FolderState state) {
    switch (state) {
    case FolderState::missing:
        fs::remove_all(path);
        return;
    case FolderState::read_only:
        mount("none", path.c_str(), "tmpfs", MS_RDONLY, nullptr);
        return;
    case FolderState::full:
        mount("none", path.c_str(), "tmpfs", 0, "size=4k");
        write_file(path + "/filler", std::string(4096, 'x'));
        return;
    }
}

void install_files(const Scenario& scenario) {
    for (const auto& [path, content] : scenario.files) {
        fs::create_directories(fs::path(path).parent_path());
        write_file(path, content);
    }
    for (const std::string& path : scenario.blocking_files) {
        fs::create_directories(fs::path(path).parent_path());
        fs::remove(path);
        mkfifo(path.c_str(), S_IRUSR | S_IWUSR);
    }
    for (const auto& [path, target] : scenario.links) {
        fs::create_directories(fs::path(path).parent_path());
        fs::create_symlink(target, path);
    }
}

void play_facts(const Scenario& scenario) {
    install_files(scenario);
    for (const auto& [path, state] : scenario.folders) {
        prepare_folder(path, state);
    }
}

void build(const DeviceRoot& device, const std::string& root) {
    mount_empty(root.c_str());
    create_private_folders(root);
    share_machine(root);
    share_libraries(root);
    bind_mount_file(device.tool, root + tool_in_world);
    if (!device.under.empty()) {
        bind_mount_file(device.under, root + under_in_world);
    }
    for (std::size_t index = 0; index < device.preloads.size(); ++index) {
        bind_mount_file(device.preloads[index], root + preload_in_world(index));
    }
    hide_resolver_settings(root);
    // The library that changes the clock keeps its state there by process number, and the numbers
    // of two worlds are the same.
    mount_empty((root + "/dev/shm").c_str());
}

} // namespace

bool enter_device_root(const DeviceRoot& device, const Scenario& scenario, std::string& problem) {
    try {
        const std::string root = "/mnt";
        if (!make_mounts_private()) {
            problem = std::string("cannot make mounts private: ") + std::strerror(errno);
            return false;
        }
        build(device, root);
        if (!pivot_to(root)) {
            problem = std::string("cannot enter the private root: ") + std::strerror(errno);
            return false;
        }
        mount_kernel_files(scenario);
        install_configuration(device.configuration);
        install_dhcp_settings();
        install_programs(scenario);
        play_facts(scenario);
        write_file(scenario_in_world, scenario.text);
        fs::create_directories(log_folder);
        return true;
    } catch (const std::exception& failure) {
        problem = failure.what();
        return false;
    }
}

std::string search_path(const Scenario& scenario) {
    if (!scenario.hidden_programs.empty()) {
        return chosen_programs;
    }
    return scenario.programs.empty() ? usual_path : std::string(chosen_programs) + ":" + usual_path;
}

} // namespace bench
