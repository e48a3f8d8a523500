// SPDX-License-Identifier: Apache-2.0
// The MAC address check (-M) against the simulated driver and chip.

#include "chip_rehearsal.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace {

using namespace bench_test;
using namespace testing;

const std::string success = "[WIFI]MAC PRINT SUCCESS\n";
const std::string failure = "[WIFI]MAC PRINT FAIL\n";
const std::string different = "[WIFI]Both addresses are not same...\n";
const std::string output_file = "[WIFI]Result file direcotry is /root/\n"
                                "[WIFI]MAC address output file /root/WIFIAddr\n";
const std::string kernel_address = "[WIFI]MAC from kernel ioctl :- 00:0A:F5:12:34:56\n";
const std::string begin = output_file + kernel_address;

void expect_pass(const ChipRehearsal& run) {
    expect_results(run, result_of(3, 0));
}

void expect_failure(const ChipRehearsal& run) {
    expect_results(run, result_of(3, 1));
}

/// Fails before the chip's address is known, so that no file is written.
void expect_failure_without_file(const ChipRehearsal& run) {
    expect_failure(run);
    EXPECT_FALSE(run.has_address_file());
}

/// An address check that breaks off, and what it tells before it says that it failed.
struct BrokenCheck {
    const char* name;
    const char* scenario;
    std::string told;
};

void PrintTo(const BrokenCheck& check, std::ostream* out) {
    *out << check.scenario;
}

// Broadcom

TEST(BroadcomMac, passes_when_the_chip_stores_the_address_of_the_interface) {
    const ChipRehearsal run("mac/broadcom-same", {"-M"});
    EXPECT_EQ(begin + "[WIFI]MAC address from wl ioctl :-  00:0A:F5:12:34:56\n" + success,
              run.diagnostics());
    EXPECT_EQ("00:0A:F5:12:34:56\n", run.address_file());
    EXPECT_EQ("", run.err());
    expect_pass(run);
}

TEST(BroadcomMac, asks_the_kernel_and_then_the_wl_layer) {
    const ChipRehearsal run("mac/broadcom-same", {"-M"});
    EXPECT_EQ("request 0x8927\n"
              "  ifreq 77 6c 61 6e 30 00*35\n"
              "  result 0\n"
              "request 0x89f0\n"
              "  ifreq 77 6c 61 6e 30 00 00 00 00 00 00 00 00 00 00 00 ** ** ** ** ** ** ** ** "
              "00*16\n"
              "  record 06 01 00 00 00 00 00 00 ** ** ** ** ** ** ** ** 0e 00*23\n"
              "  buffer 63 75 72 5f 65 74 68 65 72 61 64 64 72 00*115\n"
              "  result 0\n",
              run.driver_log());
}

TEST(BroadcomMac, tells_the_ids_without_the_list_with_the_debug_option) {
    const ChipRehearsal run("mac/broadcom-same", {"-M", "-u"});
    EXPECT_THAT(run.diagnostics(), StartsWith("[WIFI]Result file direcotry is /root/\n"
                                              "[WIFI]VID 9e0c\n"
                                              "[WIFI]Actual PID 20a0\n"
                                              "[WIFI]PIDs:\n"
                                              "[WIFI]MAC address output file /root/WIFIAddr\n"));
}

TEST(BroadcomMac, fails_when_the_chip_stores_another_address) {
    const ChipRehearsal run("mac/broadcom-other", {"-M"});
    EXPECT_EQ(begin + "[WIFI]MAC address from wl ioctl :-  00:0A:F5:12:34:57\n" + different +
                  failure,
              run.diagnostics());
    EXPECT_EQ("00:0A:F5:12:34:57\n", run.address_file());
    expect_failure(run);
}

TEST(MacCheck, tells_of_the_missing_socket_with_the_debug_option) {
    const ChipRehearsal run("mac/no-socket", {"-M", "-u"});
    EXPECT_THAT(run.diagnostics(),
                EndsWith("[WIFI]PIDs:\n[WIFI]Failed to create the socket\n" + failure));
}

TEST(BroadcomMac, tells_of_the_missing_second_socket_with_the_debug_option) {
    const ChipRehearsal debug("mac/no-second-socket", {"-M", "-u"});
    EXPECT_THAT(debug.diagnostics(),
                EndsWith(kernel_address + "[WIFI]Failed to create the socket\n" + failure));
}

// Chips whose address cannot be read

TEST(MacCheck, writes_an_empty_line_for_a_chip_whose_address_cannot_be_read) {
    const ChipRehearsal run("mac/unsupported", {"-M"});
    EXPECT_EQ(begin + different + failure, run.diagnostics());
    EXPECT_EQ("\n", run.address_file());
    expect_failure(run);
}

TEST(MacCheck, writes_an_empty_line_without_a_module) {
    const ChipRehearsal run("mac/no-module", {"-M"});
    EXPECT_EQ(begin + different + failure, run.diagnostics());
    EXPECT_EQ("\n", run.address_file());
}

// Where the chip's address is written

TEST(MacCheckOutput, goes_to_the_folder_of_the_result_file) {
    const BenchRun run = Bench("mac/broadcom-same").faster(10).args({"-M", "-R/tmp/results"}).run();
    EXPECT_THAT(run.out, HasSubstr("[WIFI]Result file direcotry is /tmp/\n"
                                   "[WIFI]MAC address output file /tmp/WIFIAddr\n"));
    EXPECT_EQ("00:0A:F5:12:34:56\n", run.files.at("tmp/WIFIAddr"));
}

TEST(MacCheckOutput, goes_to_the_working_folder_when_the_result_file_has_none) {
    const BenchRun run = Bench("mac/broadcom-same").faster(10).args({"-M", "-Rresults"}).run();
    EXPECT_THAT(run.out, HasSubstr("[WIFI]Result file direcotry is \n"
                                   "[WIFI]MAC address output file WIFIAddr\n"));
    EXPECT_EQ("00:0A:F5:12:34:56\n", run.files.at("root/WIFIAddr"));
}

TEST(MacCheckOutput, that_cannot_be_written_leaves_the_verdict) {
    const BenchRun run =
        Bench("mac/broadcom-same").faster(10).args({"-M", "-R/absent/results"}).run();
    EXPECT_THAT(run.err, StartsWith("File not able to write: No such file or directory\n"));
    EXPECT_THAT(run.out, HasSubstr(success));
}

TEST(MacCheckOutput, of_a_long_result_path_is_the_folder_within_its_first_99_characters) {
    const std::string folders = "/tmp/" + std::string(93, '/');
    const BenchRun within =
        Bench("mac/broadcom-same").faster(10).args({"-M", "-R" + folders + "/results"}).run();
    EXPECT_THAT(within.out, HasSubstr("[WIFI]MAC address output file " + folders + "/WIFIAddr\n"));
    EXPECT_EQ("00:0A:F5:12:34:56\n", within.files.at("tmp/WIFIAddr"));
    const std::string beyond = "/tmp/" + std::string(200, 'x') + "/results";
    const BenchRun cut = Bench("mac/broadcom-same").faster(10).args({"-M", "-R" + beyond}).run();
    EXPECT_THAT(cut.out, HasSubstr("[WIFI]MAC address output file /tmp/WIFIAddr\n"));
}

TEST(MacCheckOutput, is_replaced_in_every_iteration) {
    const BenchRun run = Bench("mac/broadcom-same")
                             .line("file /root/WIFIAddr \"a much longer text than an address\"")
                             .faster(10)
                             .args({"-M", "-m", "2"})
                             .run();
    EXPECT_EQ("00:0A:F5:12:34:56\n", run.files.at("root/WIFIAddr"));
}

// QCA combo

TEST(ComboMac, passes_with_lower_case_digits) {
    const ChipRehearsal run("mac/combo-same", {"-M"});
    EXPECT_EQ(begin +
                  "[WIFI]DIAG Read Word (address: 0x18000)\n"
                  "[WIFI]Value in target at 0x18000: 0x12f50a00 (318048768)\n"
                  "[WIFI]buf2 is 12f50a00 and its length is 8\n"
                  "[WIFI]mac_addr is 00:0a:f5:12: and its length is 12\n"
                  "[WIFI]DIAG Read Word (address: 0x18004)\n"
                  "[WIFI]Value in target at 0x18004: 0x5634 (22068)\n"
                  "[WIFI]buf2 is 00005634 and its length is 8\n"
                  "[WIFI]mac_addr is 00:0a:f5:12:34:56 and its length is 17\n"
                  "[WIFI]fw_mac_addr is 00:0a:f5:12:34:56 and its length is 17\n"
                  "[WIFI] prev_mac [00:0A:F5:12:34:56] curr_mac [00:0a:f5:12:34:56]\n" +
                  success,
              run.diagnostics());
    EXPECT_EQ("00:0a:f5:12:34:56\n", run.address_file());
    expect_pass(run);
}

TEST(ComboMac, fails_without_a_diag_device) {
    const ChipRehearsal run("mac/combo-no-device", {"-M"});
    EXPECT_EQ(begin + failure, run.diagnostics());
    EXPECT_EQ("[WIFI]err firmware_mac_address_qca_combo failed (2) to open DIAG file "
              "(/proc/cld/athdiagpfs)\n",
              run.err());
    expect_failure_without_file(run);
}

TEST(ComboMac, ends_the_run_with_status_1_and_without_results_when_target_memory_ends) {
    const ChipRehearsal run("mac/combo-short", {"-M"});
    EXPECT_EQ(1, run.status());
    EXPECT_THAT(run.out(), EndsWith("[WIFI]DIAG Read Word (address: 0x18004)\n"));
    EXPECT_EQ("[WIFI]err ReadTargetRange failed (nbyte=0, address=0x18006 remaining=2).\n",
              run.err());
    EXPECT_FALSE(run.has_result_file());
}

// ath6kl

const std::string root = "/sys/kernel/debug/ieee80211/phy0/ath6kl/";
const std::string stat_command = "[WIFI]buf is stat " + root + "reg_addr\n";
const std::string select_first = "[WIFI]buf is echo 0x28000 > " + root + "reg_addr\n";
const std::string dump_first = "[WIFI]buf is cat  " + root + "reg_dump > /tmp/temp_file1\n";
const std::string select_second = "[WIFI]buf is echo 0x28004 > " + root + "reg_addr\n";
const std::string dump_second = "[WIFI]buf is cat  " + root + "reg_dump > /tmp/temp_file2\n";
const std::string first_dump = "[WIFI]buf2 is 0x28000: 0x12f50a00 and its length is 19\n";
const std::string second_dump = "[WIFI]buf2 is 0x28004: 0x00005634 and its length is 19\n";
const std::string complete = "[WIFI]mac_addr is 00:0a:f5:12:34:56 and its length is 17\n";
const std::string remove_first = "[WIFI]buf is rm /tmp/temp_file1\n";
const std::string remove_second = "[WIFI]buf is rm /tmp/temp_file2\n";

TEST(Ath6klMac, passes_with_the_words_of_two_registers) {
    const ChipRehearsal run("mac/ath6kl-same", {"-M"});
    EXPECT_THAT(run.diagnostics(), StartsWith(begin + "[WIFI]phy_addr is [phy0]\n" + stat_command));
    EXPECT_THAT(run.diagnostics(),
                EndsWith(select_first + dump_first + first_dump + select_second + dump_second +
                         second_dump + complete + remove_first + remove_second +
                         "[WIFI]fw_mac_addr is 00:0a:f5:12:34:56 and its length is 17\n"
                         "[WIFI] prev_mac [00:0A:F5:12:34:56] curr_mac [00:0a:f5:12:34:56]\n" +
                         success));
    EXPECT_EQ("reg_addr 0x28000\nreg_dump\nreg_addr 0x28004\nreg_dump\n", run.chip_log());
    EXPECT_EQ("00:0a:f5:12:34:56\n", run.address_file());
    EXPECT_EQ("", run.err());
    expect_pass(run);
}

TEST(Ath6klMac, keeps_the_case_of_the_driver_and_takes_any_eleven_characters_before_the_word) {
    const ChipRehearsal run("mac/ath6kl-upper-case", {"-M"});
    EXPECT_THAT(run.diagnostics(),
                HasSubstr("[WIFI]buf2 is any eleven 12F50A00 and its length is 19\n"));
    EXPECT_EQ("00:0A:F5:12:34:56\n", run.address_file());
    expect_pass(run);
}

TEST(Ath6klMac, goes_on_after_a_stat_that_exits_with_1) {
    const ChipRehearsal run("mac/ath6kl-stat-fails", {"-M"});
    EXPECT_THAT(run.diagnostics(), HasSubstr(stat_command + select_first));
    expect_pass(run);
}

TEST(Ath6klMac, fails_without_a_phy) {
    const ChipRehearsal no_phy("mac/ath6kl-no-phy", {"-M"});
    EXPECT_EQ(begin +
                  "[WIFI]readdir_r returns NULL because either no directory left or there is no "
                  "directory in dir\n"
                  "[WIFI]phy_addr is NULL\n" +
                  failure,
              no_phy.diagnostics());
    const ChipRehearsal no_debugfs("mac/ath6kl-no-debugfs", {"-M"});
    EXPECT_EQ(begin +
                  "[WIFI]Cannot open file /sys/kernel/debug/ieee80211\n"
                  "[WIFI]phy_addr is NULL\n" +
                  failure,
              no_debugfs.diagnostics());
    expect_failure_without_file(no_debugfs);
}

class BrokenAth6klMac : public TestWithParam<BrokenCheck> {};

TEST_P(BrokenAth6klMac, is_told_and_recorded_and_leaves_no_file) {
    const ChipRehearsal run(GetParam().scenario, {"-M"});
    EXPECT_THAT(run.diagnostics(), EndsWith(GetParam().told + failure));
    expect_failure_without_file(run);
}

std::string unreadable_dump(const std::string& bytes, const std::string& shown) {
    return "[WIFI]Can not read temporary file properly r_bytes is " + bytes +
           "...\n"
           "[WIFI]Content of file can't be stored in buffer and ...\n"
           "[WIFI]buf2 is " +
           shown + "\n";
}

std::string unremovable(const std::string& file) {
    return "[WIFI]Can not remove " + file +
           " using rm command. Please check file exixtence and access permissions.\n";
}

INSTANTIATE_TEST_SUITE_P(
    Reasons, BrokenAth6klMac,
    Values(BrokenCheck{"the_shell_of_stat_is_killed", "mac/ath6kl-stat-killed",
                       stat_command + "[WIFI]Call to system(stat " + root +
                           "reg_addr) is not successful...\n"},
           BrokenCheck{"no_register_can_be_dumped", "mac/ath6kl-no-dump",
                       dump_first + "[WIFI]Can not read reg_dump file using cat command. "
                                    "Please check driver status.\n"},
           BrokenCheck{"the_first_dump_has_vanished", "mac/ath6kl-loses-first",
                       dump_first + "[WIFI]File temp_file1 doesn't exist...\n"},
           BrokenCheck{"the_second_dump_has_vanished", "mac/ath6kl-loses-second",
                       dump_second + "[WIFI]File temp_file2 doesn't exist...\n"},
           BrokenCheck{"a_dump_cannot_be_read", "mac/ath6kl-unreadable-dump",
                       dump_first + unreadable_dump("-1", " and its length is 0")},
           BrokenCheck{"a_dump_is_empty", "mac/ath6kl-empty",
                       unreadable_dump("0", " and its length is 0")},
           BrokenCheck{"a_dump_has_18_characters", "mac/ath6kl-18",
                       dump_first +
                           unreadable_dump("18", "0x28000: 0x12f50a0 and its length is 18")},
           BrokenCheck{"a_dump_has_20_characters", "mac/ath6kl-20",
                       dump_first +
                           unreadable_dump("20", "0x280000: 0x12f50a00 and its length is 20")},
           BrokenCheck{"a_dump_is_longer", "mac/ath6kl-long",
                       "[WIFI]buf2 is 00000000000000000000 and its length is 20\n"},
           BrokenCheck{"the_second_dump_has_18_characters_which_is_told_in_the_opposite_order",
                       "mac/ath6kl-second-18",
                       first_dump + select_second + dump_second +
                           "[WIFI]Can not read temporary file properly and r_bytes is 18...\n"
                           "[WIFI]buf2 is 0x28004: 0x0000563 and its length is 18\n"
                           "[WIFI]Content of file can't be stored in buffer...\n"},
           BrokenCheck{"the_first_dump_cannot_be_removed", "mac/ath6kl-keeps-first",
                       complete + remove_first + unremovable("temp_file1")},
           BrokenCheck{"the_second_dump_cannot_be_removed", "mac/ath6kl-keeps-second",
                       remove_second + unremovable("temp_file2")}),
    [](const auto& check) { return check.param.name; });

class BrokenMacCheck : public TestWithParam<BrokenCheck> {};

TEST_P(BrokenMacCheck, tells_this_and_is_recorded_and_leaves_no_file) {
    const ChipRehearsal run(GetParam().scenario, {"-M"});
    EXPECT_EQ(GetParam().told + failure, run.diagnostics());
    expect_failure_without_file(run);
}

INSTANTIATE_TEST_SUITE_P(
    Reasons, BrokenMacCheck,
    Values(BrokenCheck{"the_kernel_does_not_tell_the_address", "mac/kernel-refused",
                       output_file + "[WIFI][401]IOCTL fail \n"},
           BrokenCheck{"there_is_no_socket", "mac/no-socket",
                       "[WIFI]Result file direcotry is /root/\n"},
           BrokenCheck{"there_is_no_second_socket", "mac/no-second-socket", begin},
           BrokenCheck{"the_broadcom_driver_refuses", "mac/broadcom-refused",
                       begin + "[WIFI]##### ioctl Failed to send driver #####\n\n"},
           BrokenCheck{"no_ath6kl_register_can_be_selected", "mac/ath6kl-no-files",
                       begin + "[WIFI]phy_addr is [phy0]\n" + stat_command + select_first +
                           "[WIFI]Can not write to reg_addr file using echo command. "
                           "Please check file access permissions.\n"}),
    [](const auto& check) { return check.param.name; });

} // namespace
