// SPDX-License-Identifier: Apache-2.0
// Where to look first: the report and docs/failure-codes.md say the same, word for word.

#include "console/hints.hpp"
#include "consoles.hpp"
#include "model/advice.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

namespace {

using namespace report_test;
using namespace wivex::report;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::StartsWith;

struct DocumentRow {
    std::string console;
    std::string look_at;
};

// The cells of a line "| a | b | c |".
std::vector<std::string> cells_of(const std::string& line) {
    std::vector<std::string> cells;
    const std::string between = " | ";
    std::size_t at = 2;
    while (at < line.size()) {
        std::size_t end = line.find(between, at);
        end = end == std::string::npos ? line.rfind(" |") : end;
        cells.push_back(line.substr(at, end - at));
        at = end + between.size();
    }
    return cells;
}

// The rows of all tables with a column "Look first at".
std::vector<DocumentRow> document_rows() {
    std::ifstream file(FAILURE_CODES);
    std::vector<DocumentRow> rows;
    std::size_t console = 0;
    bool advises = false;
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with("| ")) {
            advises = advises && line.starts_with("|");
            continue;
        }
        const std::vector<std::string> cells = cells_of(line);
        if (cells.back() == "Look first at") {
            advises = true;
            console = cells.size() - 3;
        } else if (advises && cells.size() == console + 3) {
            rows.push_back({cells.at(console), cells.back()});
        }
    }
    return rows;
}

bool refers_to_another_place(const DocumentRow& row) {
    return row.look_at.empty() || row.look_at.starts_with("as in test case ") ||
           row.look_at == "see above";
}

bool says(const DocumentRow& known, const AdviceRow& row) {
    return known.look_at == row.look_at && known.console.find(row.text) != std::string::npos;
}

TEST(Advice, stands_in_the_document_beside_its_console_text) {
    const std::vector<DocumentRow> document = document_rows();
    ASSERT_GT(document.size(), 50U);
    for (const AdviceRow& row : advice_rows()) {
        EXPECT_TRUE(std::ranges::any_of(document,
                                        [&](const DocumentRow& known) { return says(known, row); }))
            << row.text << ": " << row.look_at;
    }
}

TEST(Advice, of_the_document_is_all_known) {
    for (const DocumentRow& known : document_rows()) {
        EXPECT_TRUE(refers_to_another_place(known) ||
                    std::ranges::any_of(advice_rows(),
                                        [&](const AdviceRow& row) { return says(known, row); }))
            << known.console << ": " << known.look_at;
    }
}

TEST(Advice, is_there_for_every_cause) {
    const wivex::report::Run empty;
    for (std::size_t i = 0; i < cause_count; ++i) {
        EXPECT_FALSE(advice_on(empty, static_cast<Cause>(i)).empty())
            << row_of(static_cast<Cause>(i)).id;
    }
}

TEST(Advice, offers_the_doctor_for_what_can_be_seen_before_a_run) {
    const wivex::report::Run empty;
    const auto offer = StartsWith("`wivex-doctor` with the options of this run");
    for (const Cause cause : {Cause::module_absent, Cause::driver_absent, Cause::interface_down,
                              Cause::session_not_open, Cause::target_missing}) {
        EXPECT_THAT(advice_on(empty, cause), Contains(offer)) << row_of(cause).id;
    }
    EXPECT_THAT(advice_on(empty, Cause::peer_not_found), Not(Contains(offer)));
}

TEST(Advice, goes_by_the_lines_of_the_failure) {
    const std::string selecting = checks_pass + "Scan Command Sent Successfully...\n";
    const std::string failed = "Fail to send Command SELECT_NETWORK !!!\n"
                               "ERROR:SELECT_NETWORK COMMAND FAILED\n" +
                               session_closes;
    const auto timed_out =
        read_run(banner + selecting + "Unable to Connect Time out!!!\n" + failed + end);
    EXPECT_THAT(advice_on(timed_out, Cause::network_not_selected),
                ElementsAre(StartsWith("pass phrase, signal, security")));
    const auto refused_at_once =
        read_run(banner + selecting + "SELECT_NETWORK Command is  not successful\n" + failed + end);
    EXPECT_THAT(advice_on(refused_at_once, Cause::network_not_selected),
                ElementsAre("restart the supplicant"));
}

// ---- What lies behind a cause

TEST(SubCause, is_taken_from_the_events_of_the_supplicant) {
    const std::string trying = checks_pass + "Scan Command Sent Successfully...\n";
    const std::string failed = "Unable to Connect Time out!!!\n"
                               "Fail to send Command SELECT_NETWORK !!!\n"
                               "ERROR:SELECT_NETWORK COMMAND FAILED\n" +
                               session_closes + end;
    const auto behind = [&](const std::string& events) {
        return read_run(banner + trying + events + failed).failures.at(0).sub_cause;
    };
    EXPECT_EQ(behind(""), SubCause::none);
    EXPECT_EQ(behind("<3>CTRL-EVENT-SSID-TEMP-DISABLED id=0 ssid=\"line-ap\" auth_failures=1 "
                     "duration=10 reason=WRONG_KEY\n<3>CTRL-EVENT-NETWORK-NOT-FOUND \n"),
              SubCause::wrong_key);
    EXPECT_EQ(behind("<3>CTRL-EVENT-NETWORK-NOT-FOUND \n"), SubCause::access_point_absent);
    EXPECT_EQ(behind("<3>CTRL-EVENT-AUTH-REJECT 02:00:00:00:01:00 auth_type=0 status_code=1\n"),
              SubCause::authentication_refused);
    EXPECT_EQ(behind("<3>CTRL-EVENT-ASSOC-REJECT bssid=02:00:00:00:01:00 status_code=17\n"),
              SubCause::association_refused);
}

TEST(SubCause, does_not_believe_the_name_of_a_network) {
    EXPECT_EQ(read_sub_cause("<3>CTRL-EVENT-SSID-TEMP-DISABLED id=0 ssid=\"a reason=WRONG_KEY\" "
                             "auth_failures=1 duration=10 reason=CONN_FAILED"),
              SubCause::none);
}

TEST(SubCause, tells_why_there_is_no_address) {
    const std::string asking = checks_pass + scan_and_associate + "Executing dhclient...\n";
    const std::string failed = "Fail to start udhcpc!!!\nERROR:UDHCHPC START FAILED\n";
    EXPECT_EQ(read_run(banner + asking + "udhcpc: no lease, failing\n" + failed + end)
                  .failures.at(0)
                  .sub_cause,
              SubCause::no_lease);
    EXPECT_EQ(read_run(banner + asking + "sh: 1: udhcpc: not found\n" + failed + end)
                  .failures.at(0)
                  .sub_cause,
              SubCause::dhcp_client_missing);
}

TEST(SubCause, lies_behind_its_own_causes_only) {
    const auto run =
        read_run(banner + checks_pass + "udhcpc: no lease, failing\n" +
                 "Fail to send Scan Command!!!\nERROR:SCAN-FAIL\n" + session_closes + end);
    EXPECT_EQ(run.failures.at(0).sub_cause, SubCause::none);
}

} // namespace
