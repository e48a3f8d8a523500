// SPDX-License-Identifier: Apache-2.0
// No line of the tool passes in silence: every text that its source prints stands in the report's
// table, or here by name with the reason why it means nothing.

#include "console/recogniser.hpp"
#include "source_texts.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <set>
#include <string>

namespace {

using report_test::SourceText;
using testing::Contains;
using testing::IsEmpty;

struct Meaningless {
    std::string_view line;
    std::string_view reason;
};

// "x" and "7" stand for whatever the tool puts there.
constexpr auto meaningless = std::to_array<Meaningless>({
    {"x", "what somebody else wrote: an event, a reply, a listing, a path, an id"},
    {"xx", "a command and its reply, or a command that is run"},
    {"x.", "a command that is run"},
    {"x: x", "an error of the system behind a text; each caller stands by itself"},
    {": No such file or directory", "the error behind the newline of its text"},
    {"x fail", "of a search that no mode uses; its names have rows"},
    {"x7 x x", "the settings behind a text that has its row"},
    {"7", "the number behind the line of the product ids"},
    {"[WIFI]", "stands before a command that has its row"},
    {"[WIFI]x", "the name of an access point: as many as were announced, or with the prefix"},
    {"do_scan_trigger", "an argument: the name of a function"},
    {"execute_scan_nl_command", "an argument: the name of a function"},
    {" dBm", "goes to the scan listing"},
    {" ", "a part of a command"},
    {"udhcpd ", "a part of a command"},
    // The question of -F and the usage text, whose first line ends the run.
    {"Enter configuration file to be used", "question"},
    {"1: BCRM", "question"},
    {"2: QCA", "question"},
    {"3: SOFTAP ", "question"},
    {"[DEFAULT: None]", "question"},
    {"[-v: version info]", "usage"},
    {"[-h: help]", "usage"},
    {"[-u: debug]", "usage"},
    {"[-i: iteration-interval]", "usage"},
    {"[-F: Conf file selection/-F<user conf file>]", "usage"},
    {"[-R<Result file>]", "usage"},
});

struct Instance {
    std::string_view line;
    std::string_view as_printed;
};

// Where a variable has only few values: with each of them the line has to be known.
constexpr auto instances = std::to_array<Instance>({
    {"[WIFI][7]IOCTL fail ", "[WIFI][401]IOCTL fail "},
    {"[WIFI]More than 7 AP coming with matching prefix ssid",
     "[WIFI]More than 50 AP coming with matching prefix ssid"},
    {"[WIFI]x sent 7 bytes to the kernel.",
     "[WIFI]NL80211_CMD_TRIGGER_SCAN sent 36 bytes to the kernel."},
    {"[WIFI]x sent 7 bytes to the kernel.",
     "[WIFI]NL80211_CMD_GET_SCAN sent 28 bytes to the kernel."},
    {"[WIFI]File x doesn't exist...", "[WIFI]File temp_file1 doesn't exist..."},
    {"[WIFI]Can not remove x using rm command. Please check file exixtence and access permissions.",
     "[WIFI]Can not remove temp_file1 using rm command. Please check file exixtence and access "
     "permissions."},
    {"Failed to send x command to wpa_supplicant",
     "Failed to send P2P_GROUP_REMOVE command to wpa_supplicant"},
    {"Failed to send x command to wpa_supplicant",
     "Failed to send P2P_FLUSH command to wpa_supplicant"},
    {"Failed to send x command to wpa_supplicant",
     "Failed to send P2P_CONNECT command to wpa_supplicant"},
    {"Failed to send x command to wpa_supplicant",
     "Failed to send P2P_STOP_FIND command to wpa_supplicant"},
    {"Failed to send x command to wpa_supplicant",
     "Failed to send P2P_GROUP_ADD command to wpa_supplicant"},
    {"Failed to send x command to wpa_supplicant",
     "Failed to send P2P_LISTEN command to wpa_supplicant"},
    {"Sent xcommand to wpa_supplicant:", "Sent P2P_GROUP_REMOVE wlan0command to wpa_supplicant:"},
    {"Sentxcommand to wpa_supplicant:x",
     "SentP2P_CONNECT 02:00:00:00:00:01 pbc join persistentcommand to wpa_supplicant:OK"},
    {"Sent x command to wpa_supplicant:x",
     "Sent P2P_CONNECT 02:00:00:00:00:01 pbc  go_intent=7 command to wpa_supplicant:OK"},
    {"Sent x command to wpa_supplicant:x", "Sent P2P_FIND command to wpa_supplicant:OK"},
    {"Sent x command to wpa_supplicant:x", "Sent P2P_LISTEN command to wpa_supplicant:OK"},
    {"ERROR: x does not fit into a netlink message.",
     "ERROR: NL80211_CMD_GET_SCAN does not fit into a netlink message."},
    {"x fail", "search_device_P2P fail"},
    {"x fail", "stop_search_device_P2P fail"},
});

// A line of the usage text that tells what an option letter chooses.
bool is_usage(const std::string& line) {
    return line.size() > 3 && line[0] == '\t' &&
           std::isalpha(static_cast<unsigned char>(line[1])) != 0 && line.compare(2, 2, ": ") == 0;
}

bool is_meaningless(const std::string& line) {
    const auto names_it = [&](const auto& known) { return known.line == line; };
    return is_usage(line) || std::ranges::any_of(meaningless, names_it) ||
           std::ranges::any_of(instances, names_it);
}

std::set<std::string> unknown_among(const std::vector<SourceText>& texts) {
    wivex::report::Recogniser recogniser;
    std::set<std::string> unknown;
    for (const SourceText& text : texts) {
        if (recogniser.read(text.line).empty() && !is_meaningless(text.line)) {
            unknown.insert(text.file + ": " + text.line);
        }
    }
    return unknown;
}

TEST(TextsOfTheTool, are_all_known_to_the_report) {
    const std::vector<SourceText> texts = report_test::texts_in_folder(SOURCE_FOLDER);
    EXPECT_GT(texts.size(), 200U) << "the source was not found";
    for (const std::string& unknown : unknown_among(texts)) {
        ADD_FAILURE()
            << "The report does not know this line of the tool.\n  " << unknown
            << "\nGive it a row in the table of console texts that says what it means for "
               "the run, or name it in this test as meaningless.";
    }
    std::cout << texts.size() << " texts of the tool are known\n";
}

TEST(TextsOfTheTool, are_named_as_meaningless_only_while_they_are_printed) {
    const std::vector<SourceText> texts = report_test::texts_in_folder(SOURCE_FOLDER);
    for (const Meaningless& known : meaningless) {
        EXPECT_TRUE(std::ranges::any_of(texts, [&](const SourceText& text) {
            return text.line == known.line;
        })) << known.line;
    }
}

TEST(TextsOfTheTool, are_known_with_every_value_of_a_variable_that_has_few) {
    wivex::report::Recogniser recogniser;
    for (const Instance& instance : instances) {
        EXPECT_FALSE(recogniser.read(instance.as_printed).empty()) << instance.as_printed;
    }
}

// ---- How they are found

std::vector<std::string> lines_in(std::string_view source) {
    std::vector<std::string> lines;
    for (const SourceText& text : report_test::texts_in_source(source, "a.cpp")) {
        lines.push_back(text.line);
    }
    return lines;
}

TEST(SourceTexts, notices_a_line_that_somebody_adds) {
    const std::vector<SourceText> texts = report_test::texts_in_source(
        "void f() {\n    print_err(\"[WIFI]Something new: %s\\n\", why);\n}", "new.cpp");
    EXPECT_THAT(unknown_among(texts), Contains("new.cpp: [WIFI]Something new: x"));
}

TEST(SourceTexts, puts_literals_in_the_places_of_their_conversions) {
    EXPECT_THAT(lines_in(R"(print_out("%s%s in %zu\n", name.c_str(), on ? "up" : "down", n);)"),
                testing::ElementsAre("xup in 7", "xdown in 7"));
    EXPECT_THAT(lines_in(R"(print_out("%.*s of %-3d %% \n", static_cast<int>(size), text, 4);)"),
                testing::ElementsAre("x of 7 % "));
}

TEST(SourceTexts, joins_neighbouring_literals_and_splits_lines) {
    EXPECT_THAT(lines_in("print_out(\"one \"\n    \"line\\nand another\\n\");"),
                testing::ElementsAre("one line", "and another"));
}

TEST(SourceTexts, follows_wrappers_tables_and_errors) {
    EXPECT_THAT(lines_in(R"(print_debug("[WIFI]only with -u\n");)"),
                testing::ElementsAre("[WIFI]only with -u"));
    EXPECT_THAT(lines_in(R"(print_error("[WIFI]Open error", errno);)"),
                testing::ElementsAre("[WIFI]Open error: No such file or directory"));
    EXPECT_THAT(lines_in(R"({"psk", "SET_NETWORK Command for psk is not successful\n"},)"),
                testing::ElementsAre("SET_NETWORK Command for psk is not successful"));
}

TEST(SourceTexts, leaves_out_comments_and_what_is_not_printed) {
    EXPECT_THAT(lines_in("// print_out(\"no\\n\");\n/* print_out(\"no\\n\"); */\n"
                         "run_shell(\"mount -t usbfs none\");"),
                IsEmpty());
}

} // namespace
