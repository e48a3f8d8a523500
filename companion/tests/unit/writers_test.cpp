// SPDX-License-Identifier: Apache-2.0
// What the report's files hold, read back with the parsers of their formats.

#include "consoles.hpp"
#include "junit_schema.hpp"
#include "model/verdict.hpp"
#include "writers/html_writer.hpp"
#include "writers/json_writer.hpp"
#include "writers/junit_writer.hpp"
#include "writers/report_files.hpp"

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
using namespace testing;

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

// ---- One verdict

bool page_is_green(const std::string& page) {
    return page.find("<h2 class=\"verdict passed\">") != std::string::npos ||
           page.find("<h2 class=\"verdict weak\">") != std::string::npos;
}

// Of a single run, or of none.
TEST(Verdict, is_the_same_in_every_output) {
    std::vector<std::string> all = consoles();
    all.push_back(banner + legacy_pass + end);
    all.push_back(banner + legacy_pass + interrupt);
    all.push_back(banner + legacy_pass + clean_up);
    all.push_back(banner + legacy_pass + "[WIFI]Nobody knows this\n" + end);
    for (const std::string& console : all) {
        const Log log = read(console);
        if (log.runs.size() > 1) {
            continue;
        }
        const bool green = judge(log) == RunVerdict::passed;
        EXPECT_EQ(page_is_green(write_html(log)), green) << console.substr(0, 400);
        const pugi::xml_document junit = parsed(write_junit(log));
        const pugi::xml_node suite = junit.child("testsuites").child("testsuite");
        EXPECT_EQ(suite.attribute("errors").as_int() == 0, green) << console.substr(0, 400);
        const auto document = nlohmann::json::parse(write_json(log));
        EXPECT_EQ(document.at("verdict") == "passed", green);
        for (const auto& run : document.at("runs")) {
            EXPECT_EQ(run.at("clean").get<bool>(), green);
            EXPECT_EQ(run.at("missing").empty(), green);
        }
        EXPECT_EQ(write_html(log).find("ok\">passed") != std::string::npos, green);
    }
}

TEST(Junit, counts_the_iterations_behind_those_that_it_lists) {
    std::string console = banner;
    for (std::size_t i = 0; i < most_detailed_iterations + 1000; ++i) {
        console += i < most_detailed_iterations ? legacy_pass : refused;
    }
    const pugi::xml_document document = parsed(write_junit(read(console + end)));
    const pugi::xml_node suite = document.child("testsuites").child("testsuite");
    EXPECT_EQ(junit_problem(document), "");
    EXPECT_EQ(suite.attribute("failures").as_int(), 2) << "all of them, and their scan";
    const pugi::xml_node failed =
        suite.find_child([](pugi::xml_node node) { return !node.child("failure").empty(); });
    EXPECT_STREQ(failed.attribute("name").value(), "iterations 5000 to 5999");
    EXPECT_STREQ(failed.child("failure").attribute("message").value(), "1000 of 1000 failed");
}

TEST(Junit, remembers_the_runs_that_were_left_out) {
    std::string console = banner + refused + end;
    for (int i = 0; i < 10; ++i) {
        console += banner + legacy_pass + end;
    }
    const pugi::xml_document document = parsed(write_junit(read(console)));
    EXPECT_EQ(junit_problem(document), "");
    const pugi::xml_node suite = document.child("testsuites").last_child();
    EXPECT_STREQ(suite.attribute("name").value(), "wivex runs left out");
    EXPECT_EQ(suite.attribute("errors").as_int(), 1);
    EXPECT_THAT(write_html(read(console)), HasSubstr("3 earlier runs on this console are left out: "
                                                     "2 passed, 1 failed."));
}

TEST(Junit, does_not_call_a_failure_uncounted_when_the_mode_is_unknown) {
    const std::string text =
        write_junit(read(banner + checks_pass + "unable to open sockets\n" + end));
    EXPECT_THAT(text, HasSubstr("the console does not tell the mode"));
    EXPECT_THAT(text, Not(HasSubstr("not counted in the result file")));
}

TEST(Html, draws_the_share_that_failed) {
    std::string console = banner;
    for (int i = 0; i < 64 * 512; ++i) {
        console +=
            i % 64 < 5 ? checks_pass + "[WIFI]SCAN FAIL\n" : checks_pass + "[WIFI]SCAN SUCCESS\n";
    }
    EXPECT_THAT(write_html(read(console + end)), HasSubstr("--share:max(2px,7.8%)"));
}

TEST(Html, says_how_many_failures_of_a_cause_are_not_shown) {
    std::string console = banner;
    for (int i = 0; i < 200; ++i) {
        console += refused;
    }
    EXPECT_THAT(write_html(read(console + end)), HasSubstr("199 more, 99 of them shown"));
}

TEST(Html, says_what_the_line_of_the_softap_mode_means) {
    const std::string page =
        write_html(read(banner + checks_pass + "[WIFI]ERROR:create softAP problem\n"));
    EXPECT_THAT(page, HasSubstr("[WIFI]ERROR:create softAP problem"));
    EXPECT_THAT(page, HasSubstr("The line is inverted: it says that the driver was ready"));
}

TEST(Html, shows_every_line_of_the_tool_that_is_not_known) {
    const std::string page =
        write_html(read(banner + legacy_pass + "[WIFI]New <one>\n[WIFI]New two\n" + end));
    EXPECT_THAT(page, HasSubstr("[WIFI]New &lt;one&gt;\n[WIFI]New two\n</pre>"));
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

} // namespace
