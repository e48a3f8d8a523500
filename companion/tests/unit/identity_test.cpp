// SPDX-License-Identifier: Apache-2.0
// Which device a report is of: what a caller may say, what makes it doubtful, and the id of a run.

#include "consoles.hpp"
#include "junit_schema.hpp"
#include "model/identity.hpp"
#include "model/run_id.hpp"
#include "program/identity_text.hpp"
#include "program/previous_report.hpp"
#include "temporary_folder.hpp"
#include "writers/html_writer.hpp"
#include "writers/json_writer.hpp"
#include "writers/junit_writer.hpp"
#include "writers/report_files.hpp"
#include "writers/summary.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>

namespace {

using namespace wivex::report;
using namespace report_test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

Identity identity_of(std::string_view text) {
    Identity identity;
    EXPECT_EQ(read_identity(text, identity), "");
    return identity;
}

std::string problem_in(std::string_view text) {
    Identity identity;
    return read_identity(text, identity);
}

Log read_as(const Identity& identity, std::string_view console) {
    ReaderOptions options;
    options.identity = identity;
    return read(console, options);
}

std::string mac_check(const std::string& kernel, const std::string& chip) {
    return checks_pass + "[WIFI]MAC from kernel ioctl :- " + kernel +
           "\n[WIFI]MAC address from wl ioctl :-  " + chip + "\n[WIFI]MAC PRINT SUCCESS\n";
}

// ---- What a caller says

TEST(IdentityText, reads_key_value_lines_with_comments_blanks_and_carriage_returns) {
    const Identity identity = identity_of("\xEF\xBB\xBF# station 3\r\n\r\n serial = 4711 \r\n"
                                          "part=W-1\nstation=line 3\nattempt=2\noperator=Ann\n"
                                          "fact=batch=7\nfact=formula=a=b\n");
    EXPECT_EQ(identity.serial, "4711");
    EXPECT_EQ(identity.part, "W-1");
    EXPECT_EQ(identity.station, "line 3");
    EXPECT_EQ(identity.attempt, 2U);
    EXPECT_EQ(identity.operator_name, "Ann");
    EXPECT_THAT(identity.facts, ElementsAre(std::pair("batch", "7"), std::pair("formula", "a=b")));
}

TEST(IdentityText, says_what_is_wrong_and_in_which_line) {
    EXPECT_EQ(problem_in("serial=1\nseral=2\n"),
              "line 2: unknown key 'seral': there are serial, part, station, attempt, operator and "
              "fact");
    EXPECT_EQ(problem_in("serial\n"), "line 1: not key=value: serial");
    EXPECT_EQ(problem_in("\nserial=\n"), "line 2: serial has no value");
    EXPECT_EQ(problem_in("serial=1\nserial=1\n"), "line 2: serial is given twice");
    EXPECT_EQ(problem_in("fact==x\n"), "line 1: a fact has no key: =x");
    EXPECT_EQ(problem_in("fact=a=1\nfact=a=2\n"), "line 2: the fact a is given twice");
    EXPECT_EQ(problem_in("attempt=0\n"), "line 1: attempt is no number from 1 to 999999: 0");
    EXPECT_EQ(problem_in("attempt=2nd\n"), "line 1: attempt is no number from 1 to 999999: 2nd");
}

TEST(IdentityText, refuses_what_cannot_be_shown_as_it_stands) {
    EXPECT_EQ(problem_in("serial=a\x1b[2Jb"),
              "line 1: serial holds a control character, or is not UTF-8: a\\x1b[2Jb");
    EXPECT_THAT(problem_in("operator=\xff"), HasSubstr("is not UTF-8"));
    EXPECT_THAT(problem_in("operator=\xe2\x80\xae"
                           "abc"),
                HasSubstr("operator holds a control"));
    Identity identity;
    EXPECT_THAT(set_member(identity, "fact", "a=one\ntwo"), HasSubstr("control character"));
    EXPECT_THAT(set_member(identity, "fact", "a\nb=one"), HasSubstr("control character"));
    EXPECT_THAT(identity.facts, IsEmpty());
}

TEST(IdentityText, refuses_what_is_too_long_or_too_much) {
    EXPECT_EQ(problem_in("serial=" + std::string(256, 'a')), "");
    EXPECT_EQ(problem_in("serial=" + std::string(257, 'a')),
              "line 1: serial is longer than 256 bytes");
    EXPECT_EQ(problem_in("fact=" + std::string(65, 'k') + "=1"),
              "line 1: the key of a fact is longer than 64 bytes");
    std::string facts;
    for (int i = 0; i < 64; ++i) {
        facts += "fact=" + std::to_string(i) + "=x\n";
    }
    EXPECT_EQ(problem_in(facts), "");
    EXPECT_EQ(problem_in(facts + "fact=more=x"), "line 65: there are more than 64 facts");
}

TEST(Identity, takes_what_is_put_over_it) {
    const Identity both = overlaid(identity_of("serial=1\noperator=Ann\nfact=a=1\nfact=b=2\n"),
                                   identity_of("serial=2\nattempt=3\nfact=b=3\nfact=c=4\n"));
    EXPECT_EQ(both.serial, "2");
    EXPECT_EQ(both.operator_name, "Ann");
    EXPECT_EQ(both.attempt, 3U);
    EXPECT_THAT(both.facts,
                ElementsAre(std::pair("a", "1"), std::pair("b", "3"), std::pair("c", "4")));
}

// ---- The id of a run

std::string id_of(const Identity& identity, const std::string& console, std::size_t number = 0) {
    const Log log = read_as(identity, console);
    return run_id(log, log.runs.at(number));
}

TEST(RunId, is_the_same_for_the_same_console_of_the_same_unit) {
    const std::string id = id_of(identity_of("serial=1\nstation=a\noperator=Ann"), mixed);
    EXPECT_THAT(id, testing::MatchesRegex("[0-9a-f]{32}"));
    EXPECT_EQ(id, id_of(identity_of("serial=1\nstation=b\noperator=Bob"), mixed));
    ReaderOptions arriving;
    arriving.arrival_times = true;
    arriving.identity = identity_of("serial=1");
    RunReader reader(arriving);
    for (std::size_t at = 0; at < mixed.size(); at += 7) {
        reader.feed(std::string_view(mixed).substr(at, 7), 100 + static_cast<double>(at));
    }
    reader.finish(9999);
    EXPECT_EQ(id, run_id(reader.log(), reader.log().runs.back())) << "piece by piece, live";
}

TEST(RunId, is_another_for_another_unit_attempt_or_console) {
    const std::string id = id_of(identity_of("serial=1"), mixed);
    EXPECT_NE(id, id_of(identity_of("serial=2"), mixed));
    EXPECT_NE(id, id_of(identity_of("serial=1\nattempt=2"), mixed));
    EXPECT_NE(id, id_of(identity_of("serial=1"), banner + legacy_pass + end));
    EXPECT_NE(id_of({}, mixed), id);
}

TEST(RunId, does_not_depend_on_what_stands_around_the_run) {
    const std::string plain = banner + legacy_pass + end;
    const std::string id = id_of({}, plain);
    EXPECT_EQ(id, id_of({}, "login: root\n# wivex -w\n" + plain + "\n\n# exit\nlogout\n"));
    EXPECT_EQ(id, id_of({}, banner + refused + end + plain, 1)) << "behind another run";
    EXPECT_EQ(id, id_of({}, plain + banner + refused + end)) << "before another run";
    std::string serial_line;
    for (const char c : plain) {
        serial_line += c == '\n' ? "\r\n" : std::string(1, c);
    }
    EXPECT_EQ(id, id_of({}, serial_line)) << "over a serial console";
}

TEST(RunId, counts_a_line_behind_the_end_that_changes_the_verdict) {
    const std::string plain = banner + legacy_pass + end;
    EXPECT_NE(id_of({}, plain), id_of({}, plain + "[WIFI]Unable to write results\n"));
    EXPECT_NE(id_of({}, plain), id_of({}, plain + "[WIFI]Nobody knows this\n"));
}

TEST(RunId, tells_equal_runs_of_one_console_apart) {
    const std::string plain = banner + legacy_pass + end;
    EXPECT_NE(id_of({}, plain + plain, 0), id_of({}, plain + plain, 1));
    EXPECT_EQ(id_of({}, plain), id_of({}, plain + plain, 0)) << "one more does not change it";
}

// ---- What makes an identity doubtful

TEST(IdentityWarnings, are_none_for_a_plain_run) {
    EXPECT_THAT(identity_warnings(read_as(identity_of("serial=1"), mixed)), IsEmpty());
}

TEST(IdentityWarnings, tell_two_macs_under_one_serial) {
    const Log log = read_as(identity_of("serial=4711"),
                            banner + mac_check("02:00:00:00:00:01", "02:00:00:00:00:01") + end +
                                banner + mac_check("02:00:00:00:00:0A", "02:00:00:00:00:0a") + end);
    EXPECT_THAT(identity_warnings(log),
                ElementsAre("several MAC addresses of the kernel in one serial number, 4711: "
                            "02:00:00:00:00:01 and 02:00:00:00:00:0a",
                            "several MAC addresses of the chip in one serial number, 4711: "
                            "02:00:00:00:00:01 and 02:00:00:00:00:0a"));
    EXPECT_EQ(identity_mac(log), "") << "nobody knows which";
}

TEST(IdentityWarnings, tell_two_macs_in_one_run) {
    const Log log = read(banner + mac_check("02:00:00:00:00:01", "02:00:00:00:00:01") +
                         mac_check("02:00:00:00:00:02", "02:00:00:00:00:02") + end);
    EXPECT_EQ(identity_warnings(log).size(), 2U);
}

TEST(IdentityWarnings, tell_a_chip_that_is_not_of_this_kernel) {
    const Log log = read(banner + mac_check("02:00:00:00:00:01", "02:00:00:00:00:02") + end);
    EXPECT_THAT(identity_warnings(log),
                ElementsAre("the kernel's MAC address 02:00:00:00:00:01 is not the chip's, "
                            "02:00:00:00:00:02"));
}

TEST(IdentityWarnings, take_a_mac_in_other_letters_for_the_same) {
    const Log log = read(banner + mac_check("02:00:00:00:AB:CD", "02:00:00:00:ab:cd") + end);
    EXPECT_THAT(identity_warnings(log), IsEmpty());
    EXPECT_EQ(identity_mac(log), "02:00:00:00:ab:cd");
}

TEST(IdentityWarnings, tell_a_console_of_another_device_than_this_one) {
    Identity identity;
    identity.mac = "02:00:00:00:00:09";
    const Log log =
        read_as(identity, banner + mac_check("02:00:00:00:00:01", "02:00:00:00:00:01") + end);
    EXPECT_THAT(
        identity_warnings(log),
        ElementsAre("the interface's MAC address is 02:00:00:00:00:09, and the console shows "
                    "02:00:00:00:00:01"));
}

class PreviousReport : public testing::Test {
protected:
    PreviousReport() {
        write_report(read_as(identity_of("serial=1"), console_), folder_.path());
    }
    std::vector<std::string> warnings_behind(Identity identity, const std::string& console) const {
        read_previous_report(folder_.path(), identity);
        return identity_warnings(read_as(identity, console));
    }

    test_tools::TemporaryFolder folder_{"previous-report"};
    std::string console_ = banner + mac_check("02:00:00:00:00:01", "02:00:00:00:00:01") + end;
};

TEST_F(PreviousReport, tells_two_serials_with_one_mac) {
    EXPECT_THAT(warnings_behind(identity_of("serial=2"), console_),
                ElementsAre("two serial numbers with one MAC address, 02:00:00:00:00:01: 2, and 1 "
                            "in the report that stood here before"));
    EXPECT_THAT(warnings_behind(identity_of("serial=1"), console_), IsEmpty());
}

TEST_F(PreviousReport, tells_one_serial_with_two_macs) {
    EXPECT_THAT(warnings_behind(identity_of("serial=1"),
                                banner + mac_check("02:00:00:00:00:02", "02:00:00:00:00:02") + end),
                ElementsAre("one serial number, 1, with two MAC addresses: 02:00:00:00:00:02, and "
                            "02:00:00:00:00:01 in the report that stood here before"));
}

TEST_F(PreviousReport, is_no_trouble_when_it_is_none) {
    for (const std::string text : {"", "{", "[[[[[[", "{\"identity\":{\"serial\":", "\xff\xfe",
                                   "{\"runs\":[{\"identity\":{\"serial\":\"x\",\"mac\":1}}]}"}) {
        std::ofstream(folder_.path() + "/run.json") << text;
        EXPECT_THAT(warnings_behind(identity_of("serial=2"), console_), IsEmpty()) << text;
    }
    std::filesystem::remove_all(folder_.path());
    EXPECT_THAT(warnings_behind(identity_of("serial=2"), console_), IsEmpty());
}

// ---- Every output

const std::string hostile = "</title><script>alert(1)</script>&\"'";

Log hostile_log() {
    Identity identity;
    identity.serial = hostile;
    identity.station = "line 3";
    identity.attempt = 2;
    identity.facts = {{hostile, hostile}};
    return read_as(identity, banner + mac_check("02:00:00:00:00:01", "02:00:00:00:00:02") + end);
}

TEST(IdentityOutputs, are_escaped_and_well_formed) {
    const std::string page = write_html(hostile_log());
    EXPECT_THAT(page, Not(HasSubstr("<script>alert")));
    EXPECT_THAT(page, HasSubstr("<title>wivex: &lt;/title&gt;&lt;script&gt;"));
    EXPECT_THAT(page, HasSubstr("role=\"alert\">WARNING: the kernel&#39;s MAC address"));
    pugi::xml_document document;
    EXPECT_TRUE(document.load_string(page.c_str(), pugi::parse_default | pugi::parse_doctype));
    const std::string junit = write_junit(hostile_log());
    ASSERT_TRUE(document.load_string(junit.c_str()));
    EXPECT_EQ(junit_problem(document), "");
    EXPECT_EQ(document.select_node("//property[@name='serial']/@value").attribute().value(),
              hostile);
    EXPECT_EQ(document.select_node("//property[@name='station']/@value").attribute().as_string(""),
              std::string("line 3"));
    EXPECT_FALSE(document.select_node("//property[@name='identity_warning_1']").node().empty());
}

TEST(IdentityOutputs, hold_the_same_id_and_warnings) {
    const Log log = hostile_log();
    const auto json = nlohmann::json::parse(write_json(log));
    EXPECT_EQ(json.at("version"), 2);
    EXPECT_EQ(json.at("identity").at("serial"), hostile);
    EXPECT_EQ(json.at("identity").at("attempt"), 2);
    EXPECT_EQ(json.at("identity").at("mac"), "02:00:00:00:00:01");
    EXPECT_TRUE(json.at("identity").at("firmware").is_null());
    EXPECT_EQ(json.at("identity").at("facts").at(hostile), hostile);
    EXPECT_EQ(json.at("identity").at("warnings").size(), 1U);
    const std::string id = json.at("runs").at(0).at("id");
    EXPECT_THAT(write_junit(log), HasSubstr("name=\"run_id\" value=\"" + id + "\""));
    EXPECT_THAT(write_html(log), HasSubstr(id));
    EXPECT_THAT(summary(log), HasSubstr("WARNING: the kernel's MAC address 02:00:00:00:00:01"));
}

TEST(IdentityOutputs, leave_a_report_without_identity_as_it_was) {
    const Log log = read(mixed);
    EXPECT_THAT(write_html(log), HasSubstr("<title>wivex: 1 of 3 iterations failed"));
    EXPECT_THAT(write_html(log), Not(HasSubstr("id=\"identity\"")));
    const auto identity = nlohmann::json::parse(write_json(log)).at("identity");
    EXPECT_TRUE(identity.at("serial").is_null());
    EXPECT_TRUE(identity.at("attempt").is_null());
    EXPECT_EQ(identity.at("facts"), nlohmann::json::object());
}

} // namespace
