// SPDX-License-Identifier: Apache-2.0
#include "children.hpp"
#include "common/unique_fd.hpp"
#include "console_capture.hpp"
#include "diag/diag_device.hpp"
#include "fake_supplicant.hpp"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

namespace {

using namespace wivex::test_support;

struct FileCloser {
    void operator()(std::FILE* file) const {
        static_cast<void>(std::fclose(file));
    }
};
using UniqueFile = std::unique_ptr<std::FILE, FileCloser>;

constexpr std::uint32_t address = 0x18000;

/// A file that holds `bytes` at `address`.
UniqueFile target_memory(const std::string& bytes) {
    UniqueFile file(std::tmpfile());
    std::fseek(file.get(), address, SEEK_SET);
    std::fputs(bytes.c_str(), file.get());
    std::fflush(file.get());
    return file;
}

TEST(DiagDevice, reads_a_word_at_its_address_lowest_byte_first) {
    const UniqueFile memory = target_memory("\x11\x22\x33\x44");
    std::uint32_t word = 0;
    EXPECT_EQ(4, wivex::read_target_word(fileno(memory.get()), address, word));
    EXPECT_EQ(0x44332211U, word);
}

TEST(DiagDevice, reads_a_word_that_comes_byte_by_byte) {
    std::array<int, 2> ends{};
    ASSERT_EQ(0, socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends.data()));
    const wivex::UniqueFd memory(ends[0]);
    const wivex::UniqueFd chip(ends[1]);
    for (const char byte : {'\x11', '\x22', '\x33', '\x44'}) {
        ASSERT_EQ(1, write(chip.get(), &byte, 1));
    }
    std::uint32_t word = 0;
    EXPECT_EQ(1, wivex::read_target_word(memory.get(), address, word));
    EXPECT_EQ(0x44332211U, word);
}

TEST(DiagDevice, is_not_read_for_no_bytes) {
    EXPECT_EQ(0, wivex::ReadTargetRange(-1, address, {}));
}

TEST(DiagDeviceDeathTest, that_ends_early_ends_the_process_with_status_1) {
    const UniqueFile memory = target_memory("\x11\x22");
    std::array<char, 4> buffer{};
    EXPECT_EXIT(wivex::ReadTargetRange(fileno(memory.get()), address, buffer),
                testing::ExitedWithCode(1),
                "\\[WIFI\\]err ReadTargetRange failed "
                "\\(nbyte=0, address=0x18002 remaining=2\\)\\.\n");
}

TEST(DiagDeviceDeathTest, that_cannot_be_read_ends_the_process_with_status_1) {
    std::array<char, 4> buffer{};
    EXPECT_EXIT(wivex::ReadTargetRange(-1, address, buffer), testing::ExitedWithCode(1),
                "\\[WIFI\\]err ReadTargetRange failed "
                "\\(nbyte=-1, address=0x18000 remaining=4\\)\\.\n");
}

TEST(DiagDevice, gives_the_address_of_the_firmware) {
    const ConsoleCapture console;
    use_private_tmp();
    const int status = with_empty_folder("/proc", [] {
        std::filesystem::create_directory("/proc/cld");
        std::ofstream memory("/proc/cld/athdiagpfs");
        memory.seekp(address) << "\x11\x22\x33\x44\xaa\xbb\xcc\xdd";
        memory.close();
        std::string mac;
        return wivex::firmware_mac_address_qca_combo(mac) == 1 && mac == "11:22:33:44:aa:bb" ? 0
                                                                                             : 1;
    });
    if (status == no_own_folder) {
        GTEST_SKIP() << "no mount namespaces";
    }
    EXPECT_EQ(status, 0);
}

TEST(DiagPath, is_the_output_without_its_newline) {
    EXPECT_EQ("/proc/cld/athdiagpfs", wivex::diag_path("/proc/cld/athdiagpfs\n"));
}

TEST(DiagPath, loses_its_last_byte_even_when_that_is_no_newline) {
    EXPECT_EQ("/proc/cld/athdiagpf", wivex::diag_path("/proc/cld/athdiagpfs"));
}

TEST(DiagPath, of_less_than_16_bytes_is_a_name_that_does_not_exist) {
    EXPECT_EQ("unknown_DIAG_device", wivex::diag_path(""));
    EXPECT_EQ("unknown_DIAG_device", wivex::diag_path("/proc/cld/diag\n"));
    EXPECT_EQ("/proc/cld/diag1", wivex::diag_path("/proc/cld/diag1\n"));
}

} // namespace
