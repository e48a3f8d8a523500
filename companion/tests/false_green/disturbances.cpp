// SPDX-License-Identifier: Apache-2.0
#include "disturbances.hpp"

#include <algorithm>
#include <array>

namespace report_test {

namespace {

constexpr std::string_view announcement = "[WIFI]ResultFile: ";
constexpr std::string_view first_line = "\n[WIFI]Chip type is = ";

// A longer line is read in pieces of this many bytes.
constexpr std::size_t longest_line = 4096;
// More than a reader keeps.
constexpr std::size_t many_iterations = 5001;
constexpr std::size_t many_runs = 12;
constexpr std::size_t many_access_points = 400;
constexpr std::size_t partners = 24;

constexpr std::array<std::string_view, 6> foreign_lines{
    "usb 1-1: new high-speed USB device number 7 using xhci_hcd\n",
    "[   12.345678] wlan0: associated\n",
    "<3>CTRL-EVENT-SCAN-RESULTS \n",
    "[  3]  0.0- 1.0 sec  11.0 MBytes  92.3 Mbits/sec\n",
    "udhcpc: sending discover\n",
    "\xff\xfe\x01\x80 noise\n",
};

std::string_view foreign_line(std::size_t number) {
    return foreign_lines.at(number % foreign_lines.size());
}

std::string repeated(std::string_view text, std::size_t times) {
    std::string all;
    all.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

/// One place of a console, between two lines or in one.
struct Place {
    std::string_view before;
    std::string_view line;
    std::string_view behind;
    std::size_t number;
};

void disturb_at(const Place& place, bool good, const Take& take) {
    const auto say = [&](std::string_view how, std::string console) {
        take({how, std::move(console), good, 1});
    };
    const std::string before(place.before);
    const std::string line(place.line);
    const std::string behind(place.behind);
    say("cut behind a line", before + line);
    say("cut in a line", before + line.substr(0, line.size() / 2));
    say("without a line", before + behind);
    say("a line twice", before + line + line + behind);
    say("a foreign line between", before + std::string(foreign_line(place.number)) + line + behind);
    const std::string noise(foreign_line(place.number));
    say("noise in front of a line", before + noise.substr(0, noise.size() - 1) + line + behind);
    say("a foreign line in a line",
        before + line.substr(0, line.size() / 2) + noise + line.substr(line.size() / 2) + behind);
    // The end of a piece lies somewhere in the text.
    const std::size_t in_front = longest_line - place.number % (line.size() + 1);
    say("a line that is too long", before + std::string(in_front, '.') + line + behind);
}

void crowd(const Recording& recording, const Take& take) {
    const std::size_t place = recording.console.find(first_line);
    if (place == std::string::npos) {
        return;
    }
    std::string names;
    for (std::size_t i = 0; i < many_access_points; ++i) {
        names += "\n02:00:00:00:" + std::to_string(10 + i / 90) + ":" +
                 std::to_string(10 + i % 90) + "\t2412\t-40\t[ESS]\tname " + std::to_string(i);
    }
    std::string console = recording.console;
    console.insert(place, names);
    take({"more access points than are kept", console, is_good(recording), 1});
}

} // namespace

std::vector<std::string_view> lines_of(std::string_view console) {
    std::vector<std::string_view> lines;
    while (!console.empty()) {
        const std::size_t newline = console.find('\n');
        const std::size_t length = newline == std::string_view::npos ? console.size() : newline + 1;
        lines.push_back(console.substr(0, length));
        console.remove_prefix(length);
    }
    return lines;
}

bool is_good(const Recording& recording) {
    return recording.result_file && recording.result_file->find("passed") != std::string::npos &&
           recording.result_file->find("fail") == std::string::npos;
}

std::size_t announcements_in(std::string_view console) {
    std::size_t count = 0;
    for (const std::string_view line : lines_of(console)) {
        count += line.find(announcement) != std::string_view::npos &&
                         (line.ends_with(" Updated\n") || line.ends_with(" Updated\r\n"))
                     ? 1
                     : 0;
    }
    return count;
}

void disturb(const Recording& recording, const Take& take) {
    const bool good = is_good(recording);
    const std::string_view console = recording.console;
    take({"as it is", recording.console, good, 1});
    std::size_t at = 0;
    std::size_t number = 0;
    for (const std::string_view line : lines_of(console)) {
        disturb_at({console.substr(0, at), line, console.substr(at + line.size()), number}, good,
                   take);
        at += line.size();
        ++number;
    }
    std::string returns;
    for (const char c : console) {
        returns += c == '\n' ? std::string("\r\n") : std::string(1, c);
    }
    take({"with carriage returns", returns, good, 1});
    crowd(recording, take);
}

void join(std::span<const Recording> recordings, const Take& take) {
    const std::size_t count = recordings.size();
    for (std::size_t i = 0; i < count; ++i) {
        const Recording& one = recordings[i];
        for (std::size_t step = 1; step <= partners && step < count; ++step) {
            const Recording& other = recordings[(i + step * step * 7 + step) % count];
            const bool good = is_good(one) && is_good(other);
            take({"two runs", one.console + other.console, good, 2});
            const std::vector<std::string_view> lines = lines_of(one.console);
            std::string cut;
            // When a run has left nothing, not even its banner, nobody can know of it.
            const std::size_t kept = std::max<std::size_t>(2, lines.size() * step / (partners + 1));
            for (std::size_t line = 0; line < std::min(kept, lines.size()); ++line) {
                cut += lines[line];
            }
            take({"a cut run and another", cut + other.console, good, 2});
            const std::size_t banner = other.console.find("[WIFI]WIVEX");
            if (banner != std::string::npos) {
                const std::size_t end = other.console.find('\n', banner) + 1;
                take({"two runs, the second without its banner",
                      one.console + other.console.substr(end), good, 2});
            }
        }
        const Recording& last = recordings[(i + 1) % count];
        take({"more runs than are kept", one.console + repeated(last.console, many_runs),
              is_good(one) && is_good(last), many_runs + 1});
        take({"more runs than are kept before it", repeated(last.console, many_runs) + one.console,
              is_good(one) && is_good(last), many_runs + 1});
    }
}

void outgrow(const Recording& recording, const Recording& good, const Take& take) {
    const std::size_t first = good.console.find(first_line);
    const std::size_t second = good.console.find(first_line, first + 1);
    const std::size_t place = recording.console.find(first_line);
    if (first == std::string::npos || second == std::string::npos || place == std::string::npos) {
        return;
    }
    const std::string iteration = good.console.substr(first, second - first);
    std::string console = recording.console;
    console.insert(place, repeated(iteration, many_iterations));
    take({"more iterations than are kept", console, is_good(recording), 1});
}

} // namespace report_test
