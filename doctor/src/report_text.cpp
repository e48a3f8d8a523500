// SPDX-License-Identifier: Apache-2.0
#include "report.hpp"
#include "text.hpp"

namespace wivex::doctor {

namespace {

struct Word {
    const char* text;
    const char* colour;
};

// Of one width, so that the points stand below each other.
Word word_of(State state) {
    switch (state) {
    case State::good:
        return {"good       ", "\033[32m"};
    case State::not_checked:
        return {"not checked", "\033[2m"};
    case State::not_known:
        return {"not known  ", "\033[33m"};
    case State::bad:
        break;
    }
    return {"bad        ", "\033[31m"};
}

std::string coloured(const char* text, const char* colour, bool colours) {
    return colours ? std::string(colour) + text + "\033[0m" : text;
}

std::string padded(const std::string& name) {
    constexpr std::size_t width = 15;
    return name + std::string(name.size() < width ? width - name.size() : 1, ' ');
}

void add_remark(const Remark& remark, std::string& text) {
    const char* const kind = remark.state == State::good        ? "    note: "
                             : remark.state == State::not_known ? "    not known: "
                                                                : "    ";
    text += kind + remark.found + "\n";
    if (remark.state > State::not_checked && !remark.prints.empty()) {
        text +=
            remark.state == State::bad ? "        the run prints: " : "        it then prints: ";
        text += printable(remark.prints) + "\n";
    }
    if (!remark.mend.empty()) {
        text += "        mend it: " + remark.mend + "\n";
    }
}

void add_point(const Point& point, bool quiet, bool colours, std::string& text) {
    const State state = point.state();
    if (quiet && state <= State::not_checked) {
        return;
    }
    const Word word = word_of(state);
    std::string line =
        coloured(word.text, word.colour, colours) + "  " + padded(point.name) + point.found;
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + "\n";
    for (const Remark& remark : point.remarks) {
        if (!quiet || remark.state > State::not_checked) {
            add_remark(remark, text);
        }
    }
}

std::string names_of(const std::vector<Point>& points, State state) {
    std::string names;
    for (const Point& point : points) {
        if (point.state() == state) {
            names += (names.empty() ? "" : ", ") + std::string(point.name);
        }
    }
    return names;
}

std::string verdict(const std::vector<Point>& points) {
    const std::string bad = names_of(points, State::bad);
    const std::string unknown = names_of(points, State::not_known);
    if (bad.empty() && unknown.empty()) {
        return "ready";
    }
    return "not ready: " + (bad.empty() ? "" : "bad: " + bad) +
           (bad.empty() || unknown.empty() ? "" : "; ") +
           (unknown.empty() ? "" : "not known: " + unknown);
}

} // namespace

std::string as_text(const Request& request, const std::vector<Point>& points, bool colours) {
    std::string text;
    for (const Point& point : points) {
        add_point(point, request.quiet, colours, text);
    }
    if (!request.quiet) {
        text += coloured(verdict(points).c_str(), "\033[1m", colours) + "\n";
    }
    return text;
}

} // namespace wivex::doctor
