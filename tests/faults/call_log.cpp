// SPDX-License-Identifier: Apache-2.0
#include "call_log.hpp"

#include "text_parts.hpp"

#include <algorithm>
#include <cctype>
#include <map>
#include <optional>
#include <utility>

namespace faults {

namespace {

constexpr std::string_view tool = "/bench/wivex(";
constexpr std::string_view loaded_by_the_bench = "/bench/preload-";
constexpr std::string_view frame_begins = " > ";
constexpr std::string_view banner = "WIVEX2_0";

/// Where the parenthesis behind the arguments stands: the last one in front of " = ".
std::size_t end_of_arguments(const std::string& line) {
    for (auto equals = line.rfind(" = "); equals != std::string::npos && equals > 0;
         equals = line.rfind(" = ", equals - 1)) {
        const auto before = line.find_last_not_of(' ', equals);
        if (before != std::string::npos && line[before] == ')') {
            return before;
        }
    }
    return std::string::npos;
}

std::optional<Call> read_call(const std::string& line) {
    const auto open = line.find('(');
    const auto close = end_of_arguments(line);
    const bool is_call = open != std::string::npos && close != std::string::npos && close > open &&
                         std::islower(static_cast<unsigned char>(line.front())) != 0;
    if (!is_call) {
        return std::nullopt;
    }
    Call call;
    call.name = line.substr(0, open);
    call.arguments = line.substr(open + 1, close - open - 1);
    return call;
}

/// "FUNCTION" of a frame "FILE(FUNCTION+0x1) [0x2]".
std::string function_of(std::string_view frame) {
    const auto open = frame.find('(');
    const auto close = frame.rfind("+0x");
    if (open == std::string_view::npos || close == std::string_view::npos || close <= open) {
        return {};
    }
    return std::string(frame.substr(open + 1, close - open - 1));
}

// A function that stands in front of the system's own makes the tool's call under its own name.
bool hands_on(std::string_view frame, std::string_view call) {
    return function_of(frame) == call;
}

struct Reader {
    std::vector<Call> calls;
    std::map<std::string, int> counts;
    bool bench_seen = false;

    void take_call(Call call) {
        call.nth = ++counts[call.name];
        calls.push_back(std::move(call));
        bench_seen = false;
    }

    void take_frame(std::string_view frame) {
        if (calls.empty()) {
            return;
        }
        Call& call = calls.back();
        const bool of_the_bench = frame.find(loaded_by_the_bench) != std::string_view::npos;
        // Only the innermost one counts: it made the call.
        if (of_the_bench && !bench_seen) {
            bench_seen = true;
            call.of_the_tool = hands_on(frame, call.name);
        }
        if (call.caller.empty() && frame.starts_with(tool)) {
            call.caller = function_of(frame);
        }
    }
};

} // namespace

std::vector<Call> read_call_log(std::string_view log) {
    Reader reader;
    for (const std::string& line : bench_test::lines_of(log)) {
        if (line.starts_with(frame_begins)) {
            reader.take_frame(std::string_view(line).substr(frame_begins.size()));
        } else if (!line.empty()) {
            if (auto call = read_call(line)) {
                reader.take_call(std::move(*call));
            }
        }
    }
    return reader.calls;
}

std::vector<Call> calls_after_the_banner(const std::vector<Call>& calls) {
    const auto shown = std::find_if(calls.begin(), calls.end(), [](const Call& call) {
        return call.name == "write" && call.arguments.find(banner) != std::string::npos;
    });
    std::vector<Call> chosen;
    if (shown != calls.end()) {
        std::copy_if(std::next(shown), calls.end(), std::back_inserter(chosen),
                     [](const Call& call) { return call.of_the_tool; });
    }
    return chosen;
}

std::optional<Call> call_that_failed(std::string_view log) {
    for (const std::string& line : bench_test::lines_of(log)) {
        if (line.find("(INJECTED)") != std::string::npos) {
            return read_call(line);
        }
    }
    return std::nullopt;
}

} // namespace faults
