// SPDX-License-Identifier: Apache-2.0
#include "program/device_facts.hpp"

#include "common/bytes.hpp"
#include "common/printable.hpp"
#include "common/unique_file.hpp"
#include "program/identity_text.hpp"
#include "program/kernel_answers.hpp"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/utsname.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <vector>

namespace wivex::report {

namespace {

constexpr std::size_t longest_value = 256;
constexpr std::chrono::seconds longest_wait{2};

// What makers of boards leave in the tables of the firmware.
constexpr auto unfilled = std::to_array<std::string_view>(
    {"0", "0123456789", "123456789", "Default string", "N/A", "None", "Not Applicable",
     "Not Specified", "Serial Number", "System Product Name", "System Serial Number",
     "To Be Filled By O.E.M.", "To be filled by O.E.M.", "Unknown", "none", "unknown"});

// As it can be shown; empty when it tells nothing.
std::string cleaned(std::string_view text) {
    text = text.substr(0, text.find('\0'));
    text = text.substr(0, text.find('\n'));
    while (text.ends_with(' ')) {
        text.remove_suffix(1);
    }
    while (text.starts_with(' ')) {
        text.remove_prefix(1);
    }
    const bool tells = text.size() <= longest_value && is_printable(text) &&
                       std::ranges::count(unfilled, text) == 0;
    return tells ? std::string(text) : "";
}

std::string first_line_of(const std::string& path) {
    const UniqueFile file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    std::array<char, longest_value + 2> buffer{};
    const ssize_t length = file.is_open() ? read(file.get(), buffer.data(), buffer.size()) : -1;
    return length <= 0 ? "" : cleaned({buffer.data(), static_cast<std::size_t>(length)});
}

std::string last_name_of_link(const std::string& path) {
    std::error_code error;
    return cleaned(std::filesystem::read_symlink(path, error).filename().string());
}

std::string first_known(std::initializer_list<std::string> texts) {
    const auto* const found =
        std::ranges::find_if(texts, [](const std::string& text) { return !text.empty(); });
    return found == texts.end() ? "" : *found;
}

// One line for each text that is known: its name, a tabulator, the text.
std::string as_lines(const Identity& identity) {
    std::string lines;
    for (const NamedText& row : identity_texts()) {
        const std::string& text = identity.*row.text;
        lines += text.empty() ? "" : std::string(row.name) + "\t" + text + "\n";
    }
    return lines;
}

Identity from_lines(std::string_view lines) {
    Identity identity;
    while (!lines.empty()) {
        const std::string_view line = lines.substr(0, lines.find('\n'));
        lines.remove_prefix(std::min(lines.size(), line.size() + 1));
        const std::size_t tabulator = std::min(line.find('\t'), line.size());
        for (const NamedText& row : identity_texts()) {
            if (row.name == line.substr(0, tabulator)) {
                identity.*row.text = line.substr(std::min(tabulator + 1, line.size()));
            }
        }
    }
    return identity;
}

// All that comes until the end of the pipe; nothing when that does not come in time.
std::optional<std::string> read_until(int fd, std::chrono::steady_clock::time_point deadline) {
    std::string text;
    std::array<char, 4096> buffer{};
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        pollfd entry{fd, POLLIN, 0};
        if (left.count() <= 0 || poll(&entry, 1, static_cast<int>(left.count())) == 0) {
            return {};
        }
        const long length = read_some(fd, buffer);
        if (length <= 0) {
            return text;
        }
        text.append(buffer.data(), static_cast<std::size_t>(length));
    }
}

} // namespace

bool is_interface_name(const std::string& name) {
    constexpr std::size_t longest_name = 15;
    return !name.empty() && name.size() <= longest_name && name != "." && name != ".." &&
           std::ranges::all_of(name, [](char c) { return c > ' ' && c < 127 && c != '/'; });
}

Identity facts_in_files(const std::string& root, const std::string& interface) {
    const std::string tree = root + "/proc/device-tree/";
    const std::string dmi = root + "/sys/class/dmi/id/";
    const std::string net = root + "/sys/class/net/" + interface + "/";
    Identity identity;
    identity.part =
        first_known({first_line_of(tree + "model"), first_line_of(dmi + "product_name")});
    identity.serial =
        first_known({first_line_of(tree + "serial-number"), first_line_of(dmi + "product_serial")});
    identity.mac = mac_address(first_line_of(net + "address"));
    identity.driver = last_name_of_link(net + "device/driver");
    identity.driver_version = first_line_of(net + "device/driver/module/version");
    return identity;
}

Identity facts_of_kernel(const std::string& interface) {
    Identity identity;
    utsname names{};
    if (uname(&names) == 0) {
        identity.kernel = cleaned(names.release);
    }
    const DriverAnswer driver = ask_driver(interface);
    identity.driver = cleaned(driver.name);
    identity.driver_version = cleaned(driver.version);
    identity.firmware = cleaned(driver.firmware);
    identity.regulatory_domain = cleaned(regulatory_domain(interface));
    return identity;
}

std::optional<std::string> told_within(std::chrono::milliseconds patience,
                                       const std::function<std::string()>& ask) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return {};
    }
    const UniqueFile reading(ends[0]);
    UniqueFile writing(ends[1]);
    const pid_t child = fork();
    if (child == 0) {
        write_all(writing.get(), ask());
        _exit(0);
    }
    writing.reset();
    if (child < 0) {
        return {};
    }
    auto text = read_until(reading.get(), std::chrono::steady_clock::now() + patience);
    // One that the kernel keeps cannot be waited for.
    kill(child, SIGKILL);
    waitpid(child, nullptr, text ? 0 : WNOHANG);
    return text;
}

Identity device_facts(const std::string& interface) {
    const auto told = told_within(longest_wait, [&] {
        return as_lines(overlaid(facts_of_kernel(interface), facts_in_files("", interface)));
    });
    Identity identity = from_lines(told.value_or(""));
    if (!told) {
        identity.warnings.push_back("the device did not tell its facts within " +
                                    std::to_string(longest_wait.count()) +
                                    " seconds: they are not known");
    } else if (identity.mac.empty()) {
        identity.warnings.push_back("the device tells no MAC address of " + interface);
    }
    return identity;
}

} // namespace wivex::report
