// SPDX-License-Identifier: Apache-2.0
// Scan test (-S) on the bench: true generic netlink messages, answered by a simulated nl80211.

#include "bench_run.hpp"
#include "text_parts.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

namespace {

using namespace bench_test;
using namespace testing;

constexpr const char* passed = "Test case 1 passed \nTest case 2 passed \nTest case 5 passed \n";
constexpr const char* failed = "Test case 1 passed \nTest case 2 passed \nTest case 5 fail # 1\n";

BenchRun scan(Bench bench, const std::string& option = "-S", const std::string& count = "1") {
    return bench.args({option, "-m", count}).run();
}

TEST(Scan, prints_its_steps_and_verdict_in_order) {
    const BenchRun run = scan(Bench("scan-listing"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]WIFI DRIVER READY\n"
                                   "[WIFI]First time dump /tmp/ap_status.txt\n"
                                   "[WIFI]NL80211_CMD_TRIGGER_SCAN sent 36 bytes to the kernel.\n"
                                   "[WIFI]Waiting for scan to complete...\n"
                                   "[WIFI]Got NL80211_CMD_NEW_SCAN_RESULTS.\n"
                                   "[WIFI]Scan is done.\n"
                                   "[WIFI]NL80211_CMD_GET_SCAN sent 28 bytes to the kernel.\n"
                                   "[WIFI]Number of APs founds are 3\n"
                                   "[WIFI]LINE-AP-1\n"
                                   "[WIFI]\\x20ab\\x20\n"
                                   "[WIFI]\n"
                                   "[WIFI]No ssid defined for check\n"
                                   "[WIFI]AP scan result dump to file /tmp/ap_status.txt\n"
                                   "[WIFI]SCAN SUCCESS\n"));
    EXPECT_THAT(run.err, HasSubstr("[WIFI]File: No such file or directory\n"));
    EXPECT_EQ(run.result_file(), passed);
}

TEST(Scan, writes_three_lines_for_each_bss) {
    EXPECT_EQ(scan(Bench("scan-listing")).files.at("tmp/output"),
              "BSS 02:00:00:00:01:0A \n\tsignal: -55.-12 dBm\n\tSSID: LINE-AP-1\n"
              "BSS 02:00:00:00:01:0B \n\tsignal: -40.00 dBm\n\tSSID: \\x20ab\\x20\n"
              "BSS 02:00:00:00:01:0C \n\tsignal: -71.-05 dBm\n\tSSID: \n");
}

TEST(Scan, asks_the_kernel_for_its_group_and_for_all_names) {
    const std::string question = "type 0x10 flags 0x5: 03 01 00 00 0c 00 02 00 "
                                 "6e 6c 38 30 32 31 31 00\n";
    EXPECT_EQ(scan(Bench("scan-listing")).files.at("air.log"),
              question + question +
                  "type 0x1c flags 0x5: 21 00 00 00 08 00 03 00 02 00 00 00 "
                  "08 00 2d 00 04 00 01 00\n"
                  "type 0x1c flags 0x305: 20 00 00 00 08 00 03 00 02 00 00 00\n");
}

TEST(Scan, escapes_what_is_not_printable) {
    EXPECT_EQ(scan(Bench("scan-odd-names")).files.at("tmp/output"),
              "BSS 02:00:00:00:01:01 \n\tsignal: -40.00 dBm\n\tSSID: a b\n"
              "BSS 02:00:00:00:01:02 \n\tsignal: -40.00 dBm\n\tSSID: a\\x5cb\n"
              "BSS 02:00:00:00:01:03 \n\tsignal: -40.00 dBm\n\tSSID: AP/one\n"
              "BSS 02:00:00:00:01:04 \n\tsignal: -40.00 dBm\n\tSSID: AP's two\n"
              "BSS 02:00:00:00:01:05 \n\tsignal: -40.00 dBm\n\tSSID: caf\\xc3\\xa9\n"
              "BSS 02:00:00:00:01:06 \n\tsignal: -40.00 dBm\n"
              "\tSSID: AP-0123456789012345678901234567x\n");
}

TEST(Scan, passes_over_a_bss_without_elements) {
    EXPECT_EQ(scan(Bench("scan-without-elements")).files.at("tmp/output"),
              "BSS 02:00:00:00:01:02 \n\tsignal: -40.00 dBm\n\tSSID: AP-2\n");
}

TEST(Scan, never_reads_past_the_elements) {
    EXPECT_EQ(scan(Bench("scan-hostile-elements")).files.at("tmp/output"),
              "BSS 02:00:00:00:01:01 \n\tsignal: -40.00 dBm\n\tSSID: \n"
              "BSS 02:00:00:00:01:02 \n\tsignal: -40.00 dBm\n\tSSID: \n"
              "BSS 02:00:00:00:01:03 \n\tsignal: -40.00 dBm\n\tSSID: OK\n"
              "BSS 02:00:00:00:01:04 \n\tsignal: -40.00 dBm\n\tSSID: \n"
              "BSS 02:00:00:00:01:05 \n\tsignal: -40.00 dBm\n\tSSID: \n");
}

TEST(Scan, tells_messages_that_it_cannot_read_and_goes_on) {
    const BenchRun run = scan(Bench("scan-malformed-bss"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]bss info missing!\n"
                                   "[WIFI]failed to parse nested attributes!\n"));
    EXPECT_EQ(run.files.at("tmp/output"),
              "BSS 02:00:00:00:01:01 \n\tsignal: -40.00 dBm\n\tSSID: AP-1\n");
}

TEST(Scan, stops_at_the_301st_access_point) {
    const BenchRun run = scan(Bench("scan-crowd"));
    const std::string& listing = run.files.at("tmp/output");
    EXPECT_EQ(std::count(listing.begin(), listing.end(), '\n'), 900);
    EXPECT_EQ(times(run.out, "[WIFI]Number of scan APs coming more than 300\n"), 1);
    EXPECT_THAT(run.out, HasSubstr("[WIFI]Number of scan APs coming more than 300\n"
                                   "[WIFI]Number of APs founds are 300\n"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]SCAN SUCCESS\n"));
}

TEST(Scan, runs_in_a_shield_room_once_the_table_is_full) {
    const BenchRun run = scan(Bench("scan-crowd").faster(5), "-S", "3");
    EXPECT_THAT(run.out, EndsWith("[WIFI]Reset Value of sigterm_var\n"));
    const std::size_t first = run.out.find("[WIFI]SCAN SUCCESS AND RUN IN SHIELD ROOM\n");
    ASSERT_NE(first, std::string::npos);
    EXPECT_NE(run.out.find("[WIFI]SCAN SUCCESS AND RUN IN SHIELD ROOM\n", first + 1),
              std::string::npos);
    EXPECT_EQ(run.files.at("tmp/output"), "");
    EXPECT_EQ(run.result_file(), passed);
}

TEST(Scan, lists_the_access_points_of_earlier_iterations_again) {
    const BenchRun run = scan(Bench("scan-listing").faster(5), "-S", "2");
    EXPECT_THAT(run.out, HasSubstr("[WIFI]Number of APs founds are 6\n"));
}

TEST(Scan, tells_a_room_in_which_nothing_is_heard) {
    const BenchRun run = scan(Bench("scan-nothing-heard"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]SCAN SUCCESS AND RUN IN SHIELD ROOM\n[WIFI]Result"));
    EXPECT_EQ(run.files.at("tmp/ap_status.txt"), "//3/\n");
    EXPECT_EQ(run.result_file(), passed);
}

TEST(Scan, records_a_refused_trigger) {
    const BenchRun run = scan(Bench("scan-trigger-refused"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]Waiting for scan to complete...\n"
                                   "[WIFI]error_handler() called.\n"
                                   "[WIFI]ERROR: nl_recvmsgs() returned -"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]do_scan_trigger() failed with -"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]SCAN FAIL\n"));
    EXPECT_EQ(run.files.at("tmp/ap_status.txt"), "//2/\n");
    EXPECT_EQ(run.files.count("tmp/output"), 0U);
    EXPECT_EQ(run.result_file(), failed);
}

TEST(Scan, is_not_disturbed_by_an_aborted_scan_before_it) {
    const BenchRun run = scan(Bench("scan-aborted-once").faster(5), "-S", "2");
    EXPECT_THAT(run.out, HasSubstr("[WIFI]SCAN FAIL\n"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]SCAN SUCCESS\n"));
    EXPECT_EQ(run.result_file(), failed);
}

TEST(Scan, does_not_start_when_nobody_would_tell_its_end) {
    const BenchRun run = scan(Bench("scan-without-group"));
    EXPECT_THAT(run.out, Not(HasSubstr("NL80211_CMD_TRIGGER_SCAN")));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]do_scan_trigger() failed with -"));
    EXPECT_EQ(run.result_file(), failed);
}

TEST(Scan, does_not_write_its_listing_through_a_link_that_anybody_can_plant) {
    const BenchRun run = scan(Bench("scan-listing")
                                  .line("file /root/victim \"precious\\n\"")
                                  .line("file /tmp/output links /root/victim"));
    EXPECT_EQ(run.files.at("root/victim"), "precious\n");
    EXPECT_THAT(run.err, HasSubstr("[WIFI]\"/tmp/output\"File open error: "
                                   "Too many levels of symbolic links\n"));
    EXPECT_EQ(run.result_file(), failed);
}

struct FailedScan {
    const char* name;
    const char* scenario;
    std::vector<std::string> told;
};

void PrintTo(const FailedScan& scan, std::ostream* out) {
    *out << scan.scenario;
}

class ScanThatFails : public TestWithParam<FailedScan> {};

TEST_P(ScanThatFails, is_told_and_recorded) {
    const BenchRun run = scan(Bench(GetParam().scenario));
    for (const std::string& text : GetParam().told) {
        EXPECT_THAT(run.out, HasSubstr(text));
    }
    EXPECT_EQ(run.result_file(), failed);
}

INSTANTIATE_TEST_SUITE_P(
    Reasons, ScanThatFails,
    Values(FailedScan{"aborted",
                      "scan-aborted",
                      {"[WIFI]Got NL80211_CMD_SCAN_ABORTED.\n"
                       "[WIFI]ERROR: Kernel aborted scan.\n"
                       "[WIFI]do_scan_trigger() failed with 1.\n"}},
           FailedScan{"kernel_without_nl80211", "scan-without-nl80211", {"[WIFI]SCAN FAIL\n"}},
           FailedScan{
               "refused_dump", "scan-dump-refused", {"ERROR: nl_recvmsgs_default() returned -"}},
           FailedScan{"answer_to_the_trigger_lost",
                      "scan-answer-lost",
                      {"[WIFI]Waiting for scan to complete...\n"
                       "[WIFI]ERROR: nl_recvmsgs() returned -5 (Out of memory).\n"
                       "[WIFI]do_scan_trigger() failed with -5.\n"}},
           FailedScan{"part_of_the_dump_lost",
                      "scan-dump-lost",
                      {"ERROR: nl_recvmsgs_default() returned -5 (Out of memory).\n"}}),
    [](const auto& scan) { return scan.param.name; });

TEST(Scan, survives_lost_messages) {
    EXPECT_THAT(scan(Bench("scan-overflow").faster(5)).out, HasSubstr("[WIFI]SCAN SUCCESS\n"));
}

TEST(Scan, survives_late_notifications) {
    const BenchRun late = scan(Bench("scan-late-notifications").faster(5), "-S", "3");
    EXPECT_THAT(late.out, HasSubstr("[WIFI]Number of APs founds are 3\n"));
    EXPECT_EQ(late.result_file(), passed);
}

TEST(Scan, that_never_finishes_can_be_interrupted) {
    const BenchRun run = scan(Bench("scan-stays-forever").signal("INT@500ms"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]Waiting for scan to complete...\n[WIFI] Got ^C."));
    EXPECT_EQ(run.result_file(), passed);
    EXPECT_LT(run.wall_ms, 1500);
    EXPECT_LT(run.processor_ms, 100);
}

TEST(Scan, whose_dump_never_ends_can_be_interrupted) {
    const BenchRun run = scan(Bench("scan-dump-cut").signal("INT@500ms"));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.result_file(), passed);
    EXPECT_LT(run.wall_ms, 1500);
}

TEST(ScanStatus, gets_a_line_for_each_match) {
    const BenchRun run = scan(Bench("scan-listing"), "-SLINE");
    EXPECT_THAT(run.out, HasSubstr("[WIFI]ssid prefix define for check=LINE\n"
                                   "[WIFI]LINE-AP-1\n"
                                   "[WIFI]APs found with matching prefix are 1\n"
                                   "[WIFI]AP scan result dump to file /tmp/ap_status.txt\n"));
    EXPECT_EQ(run.files.at("tmp/ap_status.txt"), "02:00:00:00:01:0A/-55.-12/0/LINE-AP-1\n");
}

TEST(ScanStatus, tells_when_no_name_begins_with_the_prefix) {
    const BenchRun run = scan(Bench("scan-listing"), "-SNONE");
    EXPECT_THAT(run.out, HasSubstr("[WIFI]APs found with matching prefix are 0\n"
                                   "[WIFI]AP with prefix not found\n"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]SCAN SUCCESS\n"));
    EXPECT_EQ(run.files.at("tmp/ap_status.txt"), "//4/\n");
}

/// A scan behind an earlier one.
struct Rescan {
    const char* name;
    const char* scenario;
    const char* option;
    /// The status file before, as a scenario writes it, and behind the scan.
    std::string before;
    std::string after;
    const char* told = "";
};

void PrintTo(const Rescan& rescan, std::ostream* out) {
    *out << rescan.name;
}

class StatusOfARescan : public TestWithParam<Rescan> {};

TEST_P(StatusOfARescan, goes_on_from_the_one_before) {
    const BenchRun run = scan(
        Bench(GetParam().scenario).line("file /tmp/ap_status.txt \"" + GetParam().before + "\""),
        GetParam().option);
    EXPECT_EQ(run.files.at("tmp/ap_status.txt"), GetParam().after);
    EXPECT_THAT(run.out, HasSubstr(GetParam().told));
    EXPECT_THAT(run.err, Not(AnyOf(HasSubstr("[WIFI]File"), HasSubstr("not able to open file"))));
}

INSTANTIATE_TEST_SUITE_P(
    AccessPoints, StatusOfARescan,
    Values(Rescan{"marks_a_vanished_one_with_status_1", "scan-listing", "-SLINE",
                  "02:00:00:00:01:0F/-40.00/0/LINE-AP-9\\n",
                  "02:00:00:00:01:0F//1/LINE-AP-9\n02:00:00:00:01:0A/-55.-12/0/LINE-AP-1\n"},
           Rescan{"marks_a_returned_one_with_status_0_and_its_new_signal", "scan-listing", "-SLINE",
                  "02:00:00:00:01:0A//1/LINE-AP-1\\n", "02:00:00:00:01:0A/-55.-12/0/LINE-AP-1\n"},
           Rescan{"keeps_the_known_ones_when_the_scan_fails", "scan-aborted", "-SLINE",
                  "02:00:00:00:01:0A/-40.00/0/LINE-AP-1\\n", "02:00:00:00:01:0A//1/LINE-AP-1\n"},
           Rescan{"reads_a_marker_line_as_nothing", "scan-listing", "-SLINE", "//2/\\n",
                  "02:00:00:00:01:0A/-55.-12/0/LINE-AP-1\n"}),
    [](const auto& rescan) { return rescan.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Names, StatusOfARescan,
    Values(Rescan{"cut_at_an_apostrophe_or_slash_when_they_are_read_back", "scan-nothing-heard",
                  "-SAP",
                  "02:00:00:00:01:03/-40.00/0/AP/one\\n02:00:00:00:01:04/-40.00/0/AP's two\\n",
                  "02:00:00:00:01:03//1/AP\n02:00:00:00:01:04//1/AP\n"},
           Rescan{"counted_and_told_on_a_malformed_line", "scan-nothing-heard", "-SAP",
                  "02:00:00/-40.00/0/AP-1\\n", "//1/AP-1\n",
                  "[WIFI]Should not happend 985   scan_wifi_test\n"},
           Rescan{"taken_with_127_characters", "scan-nothing-heard", "-SAP",
                  "02:00:00:00:01:03/-40.00/0/" + std::string(127, 'x') + "\\n",
                  "02:00:00:00:01:03//1/" + std::string(127, 'x') + "\n"},
           Rescan{"left_out_with_more_than_128_characters_and_their_newline", "scan-nothing-heard",
                  "-SAP", "02:00:00:00:01:03/-40.00/0/" + std::string(128, 'x') + "\\n",
                  "02:00:00:00:01:03//1/\n", "[WIFI]Should not happend 995   scan_wifi_test\n"}),
    [](const auto& rescan) { return rescan.param.name; });

TEST(ScanStatus, ignores_the_previous_run_unless_the_choice_is_iw) {
    const auto status_after = [](const std::string& choice) {
        return Bench("scan-listing")
            .line("file /tmp/ap_status.txt \"02:00:00:00:01:0F/-40.00/0/LINE-AP-9\\n\"")
            .args({"-SLINE", "-o", choice, "-m", "1"})
            .run()
            .files.at("tmp/ap_status.txt");
    };
    EXPECT_EQ(status_after("dbus"), "02:00:00:00:01:0A/-55.-12/0/LINE-AP-1\n");
    EXPECT_THAT(status_after("iw"), StartsWith("02:00:00:00:01:0F//1/LINE-AP-9\n"));
}

TEST(ScanStatus, goes_to_the_file_that_was_named) {
    const BenchRun run = Bench("scan-listing").args({"-SLINE", "-D/root/status", "-m", "1"}).run();
    EXPECT_EQ(run.files.at("root/status"), "02:00:00:00:01:0A/-55.-12/0/LINE-AP-1\n");
    EXPECT_EQ(run.files.count("tmp/ap_status.txt"), 0U);
}

TEST(ScanStatus, is_not_written_through_a_link_that_anybody_can_plant) {
    const BenchRun run = scan(Bench("scan-listing")
                                  .line("file /root/victim \"precious\\n\"")
                                  .line("file /tmp/ap_status.txt links /root/victim"),
                              "-SLINE");
    EXPECT_EQ(run.files.at("root/victim"), "precious\n");
    EXPECT_THAT(run.err, HasSubstr("[WIFI]File: Too many levels of symbolic links\n"));
    EXPECT_THAT(run.err, HasSubstr("[WIFI]not able to open file\n"
                                   ": Too many levels of symbolic links\n"));
}

TEST(ScanStatus, that_was_named_is_written_through_a_link) {
    const BenchRun run =
        scan(Bench("scan-listing").line("file /tmp/ap_status.txt links /root/status"), "-SLINE");
    EXPECT_EQ(run.files.count("root/status"), 0U);
    const BenchRun named = Bench("scan-listing")
                               .line("file /tmp/ap_status.txt links /root/status")
                               .args({"-SLINE", "-D/tmp/ap_status.txt", "-m", "1"})
                               .run();
    EXPECT_EQ(named.files.at("root/status"), "02:00:00:00:01:0A/-55.-12/0/LINE-AP-1\n");
}

TEST(ScanStatus, that_is_missing_is_told_with_its_own_reason) {
    const BenchRun run = Bench("scan-listing").args({"-S"}).out_file("/dev/full").run();
    EXPECT_THAT(run.err, HasSubstr("[WIFI]File: No such file or directory\n"));
}

TEST(ScanStatus, that_cannot_be_written_is_told) {
    const BenchRun run =
        Bench("scan-listing").args({"-SLINE", "-D/no/such/folder", "-m", "1"}).run();
    EXPECT_THAT(run.err, HasSubstr("[WIFI]not able to open file\n: No such file or directory\n"));
    EXPECT_EQ(run.result_file(), passed);
}

TEST(ScanStatus, takes_the_first_50_matches) {
    const BenchRun run = scan(Bench("scan-sixty-matches"), "-SAP-");
    EXPECT_THAT(run.out, HasSubstr("[WIFI]More than 50 AP coming with matching prefix ssid\n"
                                   "[WIFI]APs found with matching prefix are 50\n"));
    EXPECT_EQ(times(run.out, "[WIFI]More than 50 AP"), 1);
    const std::string& status = run.files.at("tmp/ap_status.txt");
    EXPECT_EQ(std::count(status.begin(), status.end(), '\n'), 50);
}

TEST(ScanStatus, never_holds_more_than_50_access_points) {
    std::string earlier;
    for (int number = 10; number < 70; ++number) {
        earlier += "0A:00:00:00:00:" + std::to_string(number) + "/-40.00/0/AP-old\\n";
    }
    const BenchRun run = scan(
        Bench("scan-sixty-matches").line("file /tmp/ap_status.txt \"" + earlier + "\""), "-SAP-");
    const std::string& status = run.files.at("tmp/ap_status.txt");
    EXPECT_EQ(std::count(status.begin(), status.end(), '\n'), 50);
}

TEST(ScanStatus, prints_its_start_when_debugging) {
    const BenchRun run = Bench("scan-listing").args({"-S", "-u", "-m", "1"}).run();
    EXPECT_THAT(run.out, HasSubstr("[WIFI]SCAN STARTED\n\n[WIFI]First time dump"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]No ssid defined for check\n"
                                   "SSIDS CURRENTLY AVAILABLE\n\n"));
}

TEST(Scan, is_the_only_mode_that_runs_beside_others) {
    const BenchRun run = Bench("scan-listing").args({"-S", "-w", "-m", "1"}).run();
    EXPECT_THAT(run.commands(), testing::IsEmpty());
    EXPECT_EQ(run.result_file(), "Test case 1 passed \nTest case 2 passed \n"
                                 "Test case 5 passed \nTest case 8 passed \n");
}

TEST(Scan, keeps_its_descriptors_bounded_over_many_iterations) {
    const BenchRun run = Bench("scan-listing")
                             .option("--limit-files", "24")
                             .faster(50)
                             .args({"-S", "-m", "60"})
                             .run();
    EXPECT_THAT(run.out, Not(HasSubstr("SCAN FAIL")));
    EXPECT_EQ(run.result_file(), passed);
}

} // namespace
