// SPDX-License-Identifier: Apache-2.0
#include "run/command_line.hpp"

#include "common/console.hpp"
#include "common/process_state.hpp"
#include "run/mode_table.hpp"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

namespace wivex {

namespace {

constexpr int user_config_choice = -1;

// Reads one integer from standard input as far as its digits go; 0 when there is none.
int read_choice() {
    int next = std::getchar();
    while (next != EOF && std::isspace(next) != 0) {
        next = std::getchar();
    }
    std::string text;
    while (next != EOF &&
           (std::isdigit(next) != 0 || (text.empty() && (next == '-' || next == '+')))) {
        text.push_back(static_cast<char>(next));
        next = std::getchar();
    }
    std::ungetc(next, stdin);
    const long long choice = std::strtoll(text.c_str(), nullptr, 10);
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<long long>(choice, Limits::min(), Limits::max()));
}

int ask_for_config() {
    print_out("Enter configuration file to be used\n\n1: BCRM\n2: QCA\n3: SOFTAP \n"
              "[DEFAULT: None]\n\n");
    return read_choice();
}

void choose_config(const char* path) {
    if (path == nullptr) {
        run_options.config_choice = ask_for_config();
        return;
    }
    run_options.config_choice = user_config_choice;
    run_options.user_config_file = path;
}

void clear_modes() {
    for (const ModeRow& mode : mode_table()) {
        run_options.*(mode.chosen) = 0;
    }
    run_options.iteration_count = -1;
}

bool any_mode() {
    const auto modes = mode_table();
    return std::any_of(modes.begin(), modes.end(),
                       [](const ModeRow& mode) { return run_options.*(mode.chosen) != 0; });
}

void print_version() {
    print_out("\n\n[WIFI]Wivex Version 2.0\n");
    print_out("[WIFI]This build is compiled on May 13 2016, 02:36:07.\n");
}

// Chooses the mode of a letter; false when there is none.
bool choose_mode(int letter) {
    const auto modes = mode_table();
    const auto mode = std::find_if(modes.begin(), modes.end(),
                                   [letter](const ModeRow& row) { return row.letter == letter; });
    if (mode == modes.end()) {
        return false;
    }
    run_options.*(mode->chosen) = 1;
    return true;
}

// An optional argument that is missing leaves the option as it was.
template <typename Text>
void take_if_given(Text& option, const char* argument) {
    if (argument != nullptr) {
        option = argument;
    }
}

// Takes one option; false when the program is to stop.
bool take_option(int letter, char* argument) {
    const bool is_mode = choose_mode(letter);
    switch (letter) {
    case 'u':
        run_options.debug = 1;
        return true;
    case 'o':
        compare_previous = std::strcmp(argument, "iw") == 0 ? 1 : 0;
        return true;
    case 'm':
        run_options.iteration_count = std::atoi(argument);
        return true;
    case 'i':
        run_options.iteration_interval = std::atoi(argument);
        return true;
    case 'S':
        take_if_given(run_options.scan_ssid, argument);
        return true;
    case 'F':
        choose_config(argument);
        return true;
    case 'R':
        take_if_given(run_options.result_file, argument);
        return true;
    case 'D':
        if (argument != nullptr) {
            run_options.ap_status_file = argument;
            run_options.ap_status_links = Links::follow;
        }
        return true;
    case 'v':
        print_version();
        return false;
    default:
        if (!is_mode) {
            print_usage();
        }
        return is_mode;
    }
}

} // namespace

// Kept letter by letter: each '?' makes -? an option of its own, C and s take an argument but have
// no handler, and all of them end in the usage text.
const char* const option_letters = "Agu?o:?m:?s:C:?i:lMdwcS::?v?h?F::R::D::";

int parse_command_line(int argc, char* argv[]) {
    clear_modes();
    for (int letter = getopt(argc, argv, option_letters); letter != -1;
         letter = getopt(argc, argv, option_letters)) {
        if (!take_option(letter, optarg)) {
            return 0;
        }
    }
    if (!any_mode()) {
        print_usage();
        return 0;
    }
    if (run_options.iteration_count <= 0) {
        print_out("[WIFI]'m' parameter passed without value or 0: Taking number of iterations for "
                  "running test case as 1\n");
        run_options.iteration_count = 1;
    }
    return 1;
}

void print_usage() {
    print_out("\n\nUsage: wivex  -m <count> \n"
              "\tA: SoftAP mode\n"
              "\tl: loopback test\n"
              "\tS: wifiscan mode -(SSID) [optional] -o <iw/dbus> scan mode\n"
              "\tw: wlan legacy mode\n"
              "\tg: autonomous GO mode\n"
              "\tc: p2p client mode\n"
              "\td: p2p device mode\n"
              "\n"
              "[-v: version info]\n"
              "[-h: help]\n"
              "[-u: debug]\n"
              "[-i: iteration-interval]\n"
              "[-F: Conf file selection/-F<user conf file>]\n"
              "[-R<Result file>]\n"
              "\n");
}

} // namespace wivex
