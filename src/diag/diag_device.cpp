// SPDX-License-Identifier: Apache-2.0
#include "diag/diag_device.hpp"

#include "common/console.hpp"
#include "common/files.hpp"
#include "common/shell.hpp"
#include "common/waiting.hpp"
#include "diag/mac_text.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace wivex {

namespace {

constexpr std::size_t path_size = 4096;
constexpr std::size_t shortest_output = 16;
constexpr std::size_t word_digits = 8;

constexpr std::uint32_t first_word_address = 0x18000;
constexpr std::size_t bytes_of_first_word = 4;
constexpr std::uint32_t second_word_address = 0x18004;
constexpr std::size_t bytes_of_second_word = 2;

UniqueFd open_diag_device() {
    const auto output = read_from_shell("echo /proc/cld/athdiagpfs", path_size);
    if (!output) {
        print_out("[WIFI]echo /proc/cld/athdiagpfs failed\n");
        return {};
    }
    const std::string path = diag_path(*output);
    UniqueFd device = open_file(path.c_str(), O_RDWR);
    if (!device) {
        print_err("[WIFI]err %s failed (%d) to open DIAG file (%s)\n",
                  "firmware_mac_address_qca_combo", errno, path.c_str());
    }
    return device;
}

void append_word(int fd, std::uint32_t address, std::size_t bytes, std::string& mac) {
    print_out("[WIFI]DIAG Read Word (address: 0x%x)\n", address);
    std::uint32_t word = 0;
    read_target_word(fd, address, word);
    print_out("[WIFI]Value in target at 0x%x: 0x%x (%d)\n", address, word,
              std::bit_cast<int>(word));
    std::array<char, word_digits + 1> digits{};
    std::snprintf(digits.data(), digits.size(), "%.8x", word);
    print_out("[WIFI]buf2 is %s and its length is %zu\n", digits.data(), word_digits);
    append_lowest_bytes(mac, {digits.data(), word_digits}, bytes);
}

void print_mac(const std::string& mac) {
    print_out("[WIFI]mac_addr is %s and its length is %zu\n", mac.c_str(), mac.size());
}

} // namespace

int ReadTargetRange(int fd, std::uint32_t address, std::span<char> buffer) {
    lseek(fd, static_cast<off_t>(address), SEEK_SET);
    int count = 0;
    while (!buffer.empty()) {
        count = static_cast<int>(wait_for_data(fd, buffer));
        if (count < 1) {
            print_err("[WIFI]err %s failed (nbyte=%d, address=0x%x remaining=%zu).\n",
                      "ReadTargetRange", count, address, buffer.size());
            // The run stops here and writes no result file: kept.
            std::exit(1);
        }
        buffer = buffer.subspan(static_cast<std::size_t>(count));
        address += static_cast<std::uint32_t>(count);
    }
    return count;
}

int read_target_word(int fd, std::uint32_t address, std::uint32_t& word) {
    std::array<char, sizeof(word)> bytes{};
    const int count = ReadTargetRange(fd, address, bytes);
    word = std::bit_cast<std::uint32_t>(bytes);
    return count;
}

std::string diag_path(std::string_view shell_output) {
    if (shell_output.size() < shortest_output) {
        return "unknown_DIAG_device";
    }
    return std::string(shell_output.substr(0, shell_output.size() - 1));
}

int firmware_mac_address_qca_combo(std::string& out) {
    const UniqueFd device = open_diag_device();
    if (!device) {
        return 0;
    }
    std::string mac;
    append_word(device.get(), first_word_address, bytes_of_first_word, mac);
    print_mac(mac);
    append_word(device.get(), second_word_address, bytes_of_second_word, mac);
    mac.pop_back();
    print_mac(mac);
    out = mac;
    print_out("[WIFI]fw_mac_addr is %s and its length is %zu\n", out.c_str(), out.size());
    return 1;
}

} // namespace wivex
