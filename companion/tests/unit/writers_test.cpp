// What the report's files hold, read back with the parsers of their formats.

#include "consoles.hpp"
#include "html_writer.hpp"
#include "json_writer.hpp"
#include "junit_schema.hpp"
#include "junit_writer.hpp"
#include "live_view.hpp"
#include "report_files.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>
#include <set>
#include <string>

namespace {

using namespace report_test;
using namespace wivex::report;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::string mixed = banner + legacy_pass + refused + legacy_pass + end;

// Several kinds of consoles, for what must hold for all of them.
std::vector<std::string> consoles() {
    std::string endless = banner;
    for (int i = 0; i < 700; ++i) {
        endless += i % 3 == 1 ? refused : legacy_pass;
    }
    return {"",
            "nothing of the tool\n",
            mixed,
            banner,
            banner + checks_pass + "Scan Com",
            mixed + mixed,
            banner + checks_pass + "unable to open sockets\n" + end,
            banner + checks_pass +
                "[WIFI]Number of APs founds are 1\n[WIFI]<b>&\"'\x01\xff]]>\n"
                "[WIFI]SCAN SUCCESS\n" +
                end,
            banner + checks_pass + "<script>alert(1)</script>\x02\xc3\nERROR:SCAN-FAIL\n" + end,
            endless};
}

pugi::xml_document parsed(const std::string& text, unsigned options = pugi::parse_default) {
    pugi::xml_document document;
    const auto result =
        document.load_buffer(text.data(), text.size(), options, pugi::encoding_utf8);
    EXPECT_TRUE(result) << result.description() << " at " << result.offset << " of\n"
                        << text.substr(static_cast<std::size_t>(result.offset), 200);
    return document;
}

// ---- run.json

TEST(Json, is_versioned_and_whole_for_every_console) {
    for (const std::string& console : consoles()) {
        const auto document = nlohmann::json::parse(write_json(read(console)));
        EXPECT_EQ(document.at("format"), "wivex-report");
        EXPECT_EQ(document.at("version"), 2);
        EXPECT_EQ(document.at("console").at("bytes"), console.size());
        EXPECT_TRUE(document.at("runs").is_array());
    }
}

TEST(Json, tells_counts_causes_and_phases) {
    const auto run = nlohmann::json::parse(write_json(read(mixed))).at("runs").at(0);
    EXPECT_EQ(run.at("mode"), "legacy-wlan");
    EXPECT_EQ(run.at("outcomes").at("passed"), 2);
    EXPECT_EQ(run.at("outcomes").at("failed"), 1);
    EXPECT_EQ(run.at("test_cases").at(2).at("number"), 8);
    EXPECT_EQ(run.at("test_cases").at(2).at("failures"), 1);
    const auto& cause = run.at("causes").at(0);
    EXPECT_EQ(cause.at("cause"), "scan-rejected");
    EXPECT_EQ(cause.at("code"), 21);
    EXPECT_EQ(cause.at("test_case"), 8);
    EXPECT_EQ(run.at("iterations").at(1).at("phases").at("scan").at("verdict"), "failed");
    EXPECT_EQ(run.at("iterations").at(0).at("throughput"), 94.0);
}

TEST(Json, has_no_times_where_none_are_known) {
    const auto run = nlohmann::json::parse(write_json(read(mixed))).at("runs").at(0);
    EXPECT_EQ(run.at("times"), "none");
    EXPECT_TRUE(run.at("seconds").is_null());
    EXPECT_TRUE(run.at("iterations").at(0).at("phases").at("scan").at("seconds").is_null());
}

// ---- junit.xml

TEST(Junit, fits_the_published_schema_for_every_console) {
    for (const std::string& console : consoles()) {
        const pugi::xml_document document = parsed(write_junit(read(console)));
        EXPECT_EQ(junit_problem(document), "") << console.substr(0, 400);
    }
}

TEST(Junit, has_a_test_case_for_every_phase_of_every_iteration) {
    const pugi::xml_document document = parsed(write_junit(read(mixed)));
    const pugi::xml_node suite = document.child("testsuites").child("testsuite");
    EXPECT_EQ(suite.attribute("tests").as_int(), 7 + 3 + 7 + 1);
    EXPECT_EQ(suite.attribute("failures").as_int(), 1);
    const pugi::xml_node failed =
        suite.find_child([](pugi::xml_node node) { return !node.child("failure").empty(); });
    EXPECT_STREQ(failed.attribute("name").value(), "iteration 1");
    EXPECT_STREQ(failed.attribute("classname").value(), "wivex.legacy-wlan.scan");
    EXPECT_STREQ(failed.child("failure").attribute("type").value(), "scan-rejected");
    EXPECT_THAT(failed.child("failure").text().get(), HasSubstr("> ERROR:SCAN-FAIL\n"));
}

TEST(JunitSchema, refuses_what_does_not_fit) {
    EXPECT_NE(junit_problem(parsed("<testsuite/>")), "");
    EXPECT_NE(junit_problem(parsed("<testsuites><testcase/></testsuites>")), "");
    std::string text = write_junit(read(mixed));
    text.replace(text.find("tests=\"18\""), 10, "tests=\"17\"");
    EXPECT_NE(junit_problem(parsed(text)), "");
}

// ---- report.html

void collect_ids(const pugi::xml_document& document, std::set<std::string>& ids,
                 std::set<std::string>& links) {
    for (const pugi::xpath_node& found : document.select_nodes("//*")) {
        const pugi::xml_node element = found.node();
        if (!element.attribute("id").empty()) {
            EXPECT_TRUE(ids.insert(element.attribute("id").value()).second)
                << "twice: " << element.attribute("id").value();
        }
        if (!element.attribute("href").empty()) {
            links.insert(element.attribute("href").value());
        }
        EXPECT_TRUE(element.attribute("src").empty()) << element.name();
    }
}

// The page is also well-formed XML, so that this test can walk it.
TEST(Html, is_well_formed_and_leads_nowhere_else_for_every_console) {
    for (const std::string& console : consoles()) {
        const std::string page = write_html(read(console));
        EXPECT_THAT(page, StartsWith("<!DOCTYPE html>\n<html lang=\"en\">"));
        EXPECT_THAT(page, Not(HasSubstr("http")));
        EXPECT_THAT(page, Not(HasSubstr("url(")));
        const pugi::xml_document document = parsed(page, pugi::parse_default | pugi::parse_doctype);
        std::set<std::string> ids;
        std::set<std::string> links;
        collect_ids(document, ids, links);
        for (const std::string& link : links) {
            if (link != "data:,") {
                EXPECT_EQ(link.substr(0, 1), "#");
                EXPECT_EQ(ids.count(link.substr(1)), 1U) << link;
            }
        }
    }
}

TEST(Html, shows_console_text_as_text) {
    const std::string page =
        write_html(read(banner + checks_pass + "<script>alert(1)</script>\nERROR:SCAN-FAIL\n"));
    EXPECT_THAT(page, HasSubstr("&lt;script&gt;alert(1)&lt;/script&gt;"));
    EXPECT_THAT(page, Not(HasSubstr("<script>alert")));
}

TEST(Html, says_the_verdict_and_that_times_are_unknown) {
    const std::string page = write_html(read(mixed));
    EXPECT_THAT(page, HasSubstr("1 of 3 iterations failed"));
    EXPECT_THAT(page, HasSubstr("Times are unknown"));
    EXPECT_THAT(page, HasSubstr("<mark>ERROR:SCAN-FAIL</mark>"));
}

TEST(Html, asks_for_the_mode_when_the_console_does_not_tell_it) {
    EXPECT_THAT(write_html(read(banner + checks_pass + "unable to open sockets\n" + end)),
                HasSubstr("Give the mode with --mode"));
}

// ---- Files

TEST(ReportFiles, makes_its_directory_and_leaves_three_files) {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("report-test-" + std::to_string(getpid()));
    EXPECT_EQ(write_report(read(mixed), folder / "a" / "b"), "");
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder / "a" / "b")) {
        names.insert(entry.path().filename());
    }
    EXPECT_EQ(names, (std::set<std::string>{"report.html", "junit.xml", "run.json"}));
    std::filesystem::remove_all(folder);
}

TEST(ReportFiles, tells_why_it_cannot_write) {
    EXPECT_THAT(write_report(read(mixed), "/dev/null/report"), HasSubstr("/dev/null/report"));
}

// ---- The live view

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t newline = std::min(text.find('\n', at), text.size());
        lines.push_back(text.substr(at, newline - at));
        at = newline + 1;
    }
    return lines;
}

TEST(LiveView, fits_a_terminal_of_80_columns) {
    RunReader reader({Mode::unknown, true});
    LiveView view({500, true, 80});
    reader.feed(banner + legacy_pass, 0);
    reader.feed(refused, 20);
    reader.feed(checks_pass + scan_and_associate + take_address, 40);
    reader.feed("[  3]  0.0- 1.0 sec  11.0 MBytes  92.3 Mbits/sec\n", 41);
    const std::string text = view.update(reader, 44);
    EXPECT_THAT(text, HasSubstr("legacy WLAN"));
    EXPECT_THAT(text, HasSubstr("iteration 2 (3 of 500)"));
    EXPECT_THAT(text, HasSubstr("passed 1   failed 1"));
    EXPECT_THAT(text, HasSubstr("now: traffic for 4 s   throughput 92.3 Mbit/s"));
    EXPECT_THAT(text, HasSubstr("left: about 2 h 45 min"));
    EXPECT_THAT(text, HasSubstr("last failure: iteration 1, scan: SCAN refused"));
    for (const std::string& line : lines_of(text)) {
        EXPECT_LT(line.size(), 80U) << line;
    }
}

TEST(LiveView, redraws_over_what_it_drew) {
    RunReader reader;
    LiveView view({0, true, 80});
    reader.feed(banner + checks_pass);
    const std::size_t drawn = lines_of(view.update(reader, 0)).size();
    EXPECT_THAT(view.update(reader, 1), StartsWith("\r\x1b[" + std::to_string(drawn) + "A\x1b[J"));
}

TEST(LiveView, prints_plain_lines_where_there_is_no_terminal) {
    RunReader reader({Mode::unknown, true});
    LiveView view({3, false, 80});
    reader.feed(banner + legacy_pass, 0);
    reader.feed(refused, 20);
    std::string text = view.update(reader, 20);
    EXPECT_EQ(text, "iteration 0 (1 of 3) passed, 0 s, 94.0 Mbit/s\n");
    reader.feed(end, 40);
    text = view.update(reader, 40);
    EXPECT_EQ(text, "iteration 1 (2 of 3) failed, 0 s, scan: SCAN refused\n");
    EXPECT_THAT(text, Not(HasSubstr("\x1b")));
}

TEST(LiveView, ends_with_a_summary) {
    RunReader reader;
    LiveView view({0, false, 80});
    reader.feed(mixed);
    reader.finish();
    EXPECT_THAT(view.finish(reader), HasSubstr("legacy WLAN: 1 of 3 iterations failed (finished)\n"
                                               "  test case 8 (legacy WLAN): 1 failure recorded\n"
                                               "  1 x scan: SCAN refused\n"));
}

} // namespace
