// SPDX-License-Identifier: Apache-2.0
#include "kernel/request_log.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstring>

namespace bench {

namespace {

std::string hex_number(unsigned long value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "0x%lx", value);
    return text.data();
}

std::string hex_byte(std::uint8_t value) {
    std::array<char, 4> text{};
    std::snprintf(text.data(), text.size(), " %02x", value);
    return text.data();
}

// Length of a run of zeros at the end that is worth cutting short.
std::size_t zeros_at_end(std::span<const std::uint8_t> bytes, PointerPlace pointer) {
    constexpr std::size_t shortest_run = 4;
    std::size_t run = 0;
    while (run < bytes.size() - pointer.offset - pointer.size &&
           bytes[bytes.size() - run - 1] == 0) {
        ++run;
    }
    return run >= shortest_run ? run : 0;
}

} // namespace

RequestEntry::RequestEntry(unsigned long request)
    : text_("request " + hex_number(request) + "\n") {}

void RequestEntry::add_block(const char* name, std::span<const std::uint8_t> bytes,
                             PointerPlace pointer) {
    const std::size_t zeros = zeros_at_end(bytes, pointer);
    text_ += std::string("  ") + name;
    for (std::size_t at = 0; at < bytes.size() - zeros; ++at) {
        const bool in_pointer = at >= pointer.offset && at < pointer.offset + pointer.size;
        text_ += in_pointer ? " **" : hex_byte(bytes[at]);
    }
    text_ += zeros > 0 ? " 00*" + std::to_string(zeros) + "\n" : "\n";
}

void RequestEntry::finish(int result, int error) {
    text_ += "  result " + std::to_string(result);
    if (result < 0) {
        text_ += std::string(" ") + strerrorname_np(error);
    }
    text_ += "\n";
}

void append_to_log(const std::string& path, const RequestEntry& entry) {
    const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    if (fd < 0) {
        return;
    }
    if (write(fd, entry.text().data(), entry.text().size()) < 0) {
        std::perror("driver log");
    }
    close(fd);
}

} // namespace bench
