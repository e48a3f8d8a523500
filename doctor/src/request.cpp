// SPDX-License-Identifier: Apache-2.0
#include "request.hpp"

#include "common/process_state.hpp"
#include "run/command_line.hpp"
#include "run/mode_table.hpp"
#include "tool_console.hpp"

#include <getopt.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>
#include <vector>

namespace wivex::doctor {

namespace {

struct OwnWord {
    std::string_view word;
    bool Request::*flag = nullptr;
    Request::Wish wish = Request::Wish::check;
};

constexpr std::array<OwnWord, 5> own_words{{{"--json", &Request::json},
                                            {"--quiet", &Request::quiet},
                                            {"--scan", &Request::scan},
                                            {"--help", nullptr, Request::Wish::help},
                                            {"--version", nullptr, Request::Wish::version}}};

// True when the word is one of the doctor's own.
bool take_own_word(std::string_view word, Request& request) {
    const auto* const own = std::ranges::find(own_words, word, &OwnWord::word);
    if (own == own_words.end()) {
        return false;
    }
    if (own->flag != nullptr) {
        request.*own->flag = true;
    } else {
        request.wish = own->wish;
    }
    return true;
}

// The words of the run; the first one is the name of the program.
std::vector<char*> take_own_words(int argc, char* argv[], Request& request) {
    std::vector<char*> words;
    bool own_words_end = false;
    for (int index = 0; index < argc; ++index) {
        own_words_end = own_words_end || std::string_view(argv[index]) == "--";
        if (index > 0 && !own_words_end && take_own_word(argv[index], request)) {
            continue;
        }
        words.push_back(argv[index]);
        if (index > 0) {
            request.run_options += request.run_options.empty() ? "" : " ";
            request.run_options += argv[index];
        }
    }
    return words;
}

// A look at the words before the tool's parser: it answers -h and -v in its own name, and asks on
// the console for the file of a bare -F.
void look_ahead(std::vector<char*>& words, Request& request) {
    const int count = static_cast<int>(words.size()) - 1;
    optind = 0;
    for (int letter = getopt(count, words.data(), option_letters); letter != -1;
         letter = getopt(count, words.data(), option_letters)) {
        if (letter == 'h') {
            request.wish = Request::Wish::help;
        } else if (letter == 'v') {
            request.wish = Request::Wish::version;
        } else if (letter == '?' || letter == 'C' || letter == 's') {
            request.wish = Request::Wish::refuse;
        } else if (letter == 'F' && optarg == nullptr) {
            std::fputs("Which configuration file will the run be told? 1: Broadcom, 2: QCA, "
                       "3: softAP, 0: the default\n",
                       stderr);
        }
        if (request.wish != Request::Wish::check) {
            return;
        }
    }
    // The tool takes no notice of such words; here one is most likely an option without its dash.
    if (optind < count) {
        std::fprintf(stderr, "wivex-doctor: not understood: %s\n",
                     words[static_cast<std::size_t>(optind)]);
        request.wish = Request::Wish::refuse;
    }
}

RunPlan chosen_plan() {
    RunPlan plan;
    plan.mac = run_options.mac_mode != 0;
    plan.loopback = run_options.loopback_mode != 0;
    plan.softap = run_options.softap_mode != 0;
    if (plan.softap) {
        return plan;
    }
    if (run_options.scan_mode != 0) {
        plan.mode = 'S';
        return plan;
    }
    for (const ModeRow& row : mode_table()) {
        if (row.script != nullptr && run_options.*(row.chosen) != 0) {
            plan.mode = row.letter;
            return plan;
        }
    }
    return plan;
}

} // namespace

Request parse_request(int argc, char* argv[]) {
    Request request;
    std::vector<char*> words = take_own_words(argc, argv, request);
    words.push_back(nullptr);
    if (request.wish == Request::Wish::check) {
        look_ahead(words, request);
    }
    if (request.wish != Request::Wish::check) {
        return request;
    }
    optind = 0;
    if (parse_command_line(static_cast<int>(words.size()) - 1, words.data()) != 1) {
        std::fputs("wivex-doctor: which mode? One of -A -l -M -S -d -g -w -c\n", stderr);
        request.wish = Request::Wish::refuse;
    }
    static_cast<void>(take_tool_output());
    request.plan = chosen_plan();
    return request;
}

} // namespace wivex::doctor
