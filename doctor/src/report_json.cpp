// SPDX-License-Identifier: Apache-2.0
#include "report.hpp"
#include "text.hpp"

#include <array>

namespace wivex::doctor {

namespace {

// Every text is made printable first: what is left to escape is little.
std::string json_text(std::string_view text) {
    std::string escaped = "\"";
    for (const char character : printable(text)) {
        if (character == '"' || character == '\\') {
            escaped += '\\';
        }
        escaped += character;
    }
    return escaped + '"';
}

// In the order of `State`.
constexpr std::array<const char*, 4> state_names{"good", "not checked", "not known", "bad"};

const char* name_of(State state) {
    return state_names.at(static_cast<std::size_t>(state));
}

std::string json_remark(const Remark& remark) {
    return "{\"state\": " +
           json_text(remark.state == State::good ? "note" : name_of(remark.state)) +
           ", \"found\": " + json_text(remark.found) +
           ", \"run_prints\": " + json_text(remark.prints) +
           ", \"mend\": " + json_text(remark.mend) + "}";
}

std::string json_point(const Point& point, bool quiet) {
    std::string text = "    {\"point\": " + json_text(point.name) +
                       ", \"state\": " + json_text(name_of(point.state())) +
                       ", \"found\": " + json_text(point.found) + ", \"remarks\": [";
    const char* separator = "\n      ";
    bool any = false;
    for (const Remark& remark : point.remarks) {
        if (!quiet || remark.state > State::not_checked) {
            text += separator + json_remark(remark);
            separator = ",\n      ";
            any = true;
        }
    }
    return text + (any ? "\n    ]}" : "]}");
}

} // namespace

std::string as_json(const Request& request, const std::vector<Point>& points) {
    std::string text = "{\n  \"wivex_doctor\": 1,\n  \"run\": " + json_text(request.run_options) +
                       ",\n  \"ready\": " + (is_ready(points) ? "true" : "false") +
                       ",\n  \"points\": [";
    const char* separator = "\n";
    for (const Point& point : points) {
        if (!request.quiet || point.state() > State::not_checked) {
            text += separator + json_point(point, request.quiet);
            separator = ",\n";
        }
    }
    return text + "\n  ]\n}\n";
}

} // namespace wivex::doctor
