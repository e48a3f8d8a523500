// SPDX-License-Identifier: Apache-2.0
#include "launcher/options.hpp"

#include "language/text.hpp"

#include <getopt.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace bench {

namespace {

constexpr const char* usage =
    "usage: wivex-bench [OPTIONS] -- TOOL-ARGUMENTS\n"
    "\n"
    "Runs the tool in a private world; its exit status is the tool's, or 125 when the bench "
    "fails.\n"
    "\n"
    "  --scenario FILE     what happens (default: a device that passes)\n"
    "  --config FILE       take these configuration values over the usual ones\n"
    "  --set KEY=VALUE     one more configuration value\n"
    "  --out DIR           leave files, command log and usage there\n"
    "  --tool PATH         the tool (default: ../wivex beside this program)\n"
    "  --under COMMAND     start the tool through this program and its options (an emulator)\n"
    "  --driver LIBRARY    the simulated driver for the emulated processor\n"
    "  --preload LIBRARY   load a library before the tool\n"
    "  --faster N          let the tool's clock run N times as fast\n"
    "  --limit-files N     limit the tool's descriptors\n"
    "  --signal WHAT@WHEN  send INT or TERM at \"350ms\", \"command:SCAN#2+10ms\" or\n"
    "                      \"child:udhcpc+5ms\"\n"
    "  --shell             open a shell in the world instead of running the tool\n";

constexpr std::array<option, 14> long_options{{{"scenario", required_argument, nullptr, 's'},
                                               {"config", required_argument, nullptr, 'c'},
                                               {"set", required_argument, nullptr, 'k'},
                                               {"out", required_argument, nullptr, 'o'},
                                               {"tool", required_argument, nullptr, 't'},
                                               {"under", required_argument, nullptr, 'u'},
                                               {"driver", required_argument, nullptr, 'd'},
                                               {"preload", required_argument, nullptr, 'p'},
                                               {"faster", required_argument, nullptr, 'f'},
                                               {"limit-files", required_argument, nullptr, 'l'},
                                               {"signal", required_argument, nullptr, 'g'},
                                               {"shell", no_argument, nullptr, 'x'},
                                               {"help", no_argument, nullptr, 'h'},
                                               {nullptr, 0, nullptr, 0}}};

bool take_positive(const char* name, const char* text, int& value) {
    const auto number = to_number(text);
    if (!number || *number < 1) {
        std::fprintf(stderr, "wivex-bench: %s needs a positive number, not %s\n", name, text);
        return false;
    }
    value = *number;
    return true;
}

bool take_signal(const char* text, SignalPlan& signals) {
    const auto signal = parse_signal(text);
    if (!signal) {
        std::fprintf(stderr, "wivex-bench: signal not understood: %s\n", text);
        return false;
    }
    signals.push_back(*signal);
    return true;
}

// The option's text, or null when it is no text alone.
std::string* text_of(int letter, Options& options) {
    const std::array<std::pair<int, std::string*>, 6> texts{{{'s', &options.scenario},
                                                             {'c', &options.config},
                                                             {'o', &options.out},
                                                             {'t', &options.tool},
                                                             {'u', &options.start.under},
                                                             {'d', &options.driver}}};
    const auto* const found = std::find_if(
        texts.begin(), texts.end(), [letter](const auto& text) { return text.first == letter; });
    return found == texts.end() ? nullptr : found->second;
}

bool take_option(int letter, const char* value, Options& options) {
    if (std::string* const text = text_of(letter, options)) {
        *text = value;
        return true;
    }
    switch (letter) {
    case 'k':
        options.settings.emplace_back(value);
        return true;
    case 'p':
        options.start.preloads.emplace_back(value);
        return true;
    case 'f':
        return take_positive("--faster", value, options.start.speed);
    case 'l':
        return take_positive("--limit-files", value, options.descriptor_limit);
    case 'g':
        return take_signal(value, options.signals);
    case 'x':
        options.shell = true;
        return true;
    default:
        std::fputs(usage, stderr);
        return false;
    }
}

} // namespace

bool parse_options(int argc, char* argv[], Options& options) {
    for (int letter = getopt_long(argc, argv, "+h", long_options.data(), nullptr); letter != -1;
         letter = getopt_long(argc, argv, "+h", long_options.data(), nullptr)) {
        if (!take_option(letter, optarg, options)) {
            return false;
        }
    }
    options.tool_arguments.assign(argv + optind, argv + argc);
    return true;
}

} // namespace bench
