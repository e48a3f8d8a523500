// SPDX-License-Identifier: Apache-2.0
#include "language/driver_script.hpp"

#include "language/scenario_line.hpp"

#include <charconv>
#include <cstring>
#include <string_view>

namespace bench {

namespace {

// variable NAME | command NUMBER | address | socket | table
std::optional<DriverRequest> take_request(ScenarioLine& line) {
    if (line.take("address")) {
        return DriverRequest{RequestKind::address, ""};
    }
    if (line.take("socket")) {
        return DriverRequest{RequestKind::socket, ""};
    }
    if (line.take("table")) {
        return DriverRequest{RequestKind::table, ""};
    }
    const bool variable = line.take("variable");
    if (!variable && !line.take("command")) {
        return std::nullopt;
    }
    const auto name = line.take_any();
    const RequestKind kind = variable ? RequestKind::variable : RequestKind::command;
    return name ? std::optional(DriverRequest{kind, *name}) : std::nullopt;
}

std::optional<int> error_number(std::string_view name) {
    constexpr int last_error = 133;
    for (int error = 1; error <= last_error; ++error) {
        const char* const known = strerrorname_np(error);
        if (known != nullptr && name == known) {
            return error;
        }
    }
    return std::nullopt;
}

std::optional<std::vector<std::uint8_t>> hex_bytes(std::string_view text) {
    constexpr std::size_t digits = 2;
    std::vector<std::uint8_t> bytes;
    while (text.size() >= digits) {
        std::uint8_t byte = 0;
        const char* const end = text.data() + digits;
        if (std::from_chars(text.data(), end, byte, 16).ptr != end) {
            return std::nullopt;
        }
        bytes.push_back(byte);
        text.remove_prefix(digits);
        if (text.starts_with(':')) {
            text.remove_prefix(1);
        }
    }
    return text.empty() ? std::optional(bytes) : std::nullopt;
}

// "TEXT", or bytes such as 00:0a:f5.
std::optional<std::vector<std::uint8_t>> take_bytes(ScenarioLine& line) {
    if (const auto text = line.take_quoted()) {
        return std::vector<std::uint8_t>(text->begin(), text->end());
    }
    const auto digits = line.take_any();
    return digits ? hex_bytes(*digits) : std::nullopt;
}

// [at OFFSET] [claiming NUMBER] [after DELAY]. A refusal claims nothing: the kernel hands none
// back.
bool read_circumstances(ScenarioLine& line, DriverAnswer& answer) {
    if (line.take("at")) {
        const auto offset = line.take_word32();
        answer.offset = offset.value_or(0);
        if (!offset) {
            return false;
        }
    }
    if (answer.error == 0 && line.take("claiming")) {
        answer.claimed = line.take_word32();
        if (!answer.claimed) {
            return false;
        }
    }
    return line.take_after(answer.delay_ms);
}

bool read_content(ScenarioLine& line, DriverAnswer& answer) {
    const auto bytes = line.take("with") ? take_bytes(line) : std::nullopt;
    answer.bytes = bytes.value_or(std::vector<std::uint8_t>{});
    return bytes.has_value();
}

bool read_error(ScenarioLine& line, DriverAnswer& answer) {
    const auto name = line.take("with") ? line.take_any() : std::nullopt;
    const auto error = name ? error_number(*name) : std::nullopt;
    answer.error = error.value_or(0);
    return error.has_value();
}

bool read_nothing(ScenarioLine& /*line*/, DriverAnswer& /*answer*/) {
    return true;
}

bool read_answer(ScenarioLine& line, DriverScript& script,
                 bool (*read_outcome)(ScenarioLine& line, DriverAnswer& answer)) {
    const auto request = take_request(line);
    if (!request) {
        return false;
    }
    DriverAnswer answer;
    answer.request = *request;
    answer.times = line.take_times().value_or(Times{});
    if (!read_outcome(line, answer) || !read_circumstances(line, answer)) {
        return false;
    }
    script.answers.push_back(std::move(answer));
    return true;
}

// request INDEX as NUMBER NAME
bool read_private_request(ScenarioLine& line, PrivateTable& table) {
    const auto index = line.take_number();
    const auto number = line.take("as") ? line.take_word32() : std::nullopt;
    const auto name = line.take_any();
    if (!index || !number || !name) {
        return false;
    }
    table.entries[static_cast<std::size_t>(*index)] = {*number, *name};
    return true;
}

// COUNT requests [with hint] [claiming NUMBER]
bool read_table(ScenarioLine& line, DriverScript& script) {
    const auto count = line.take_number();
    if (!count || !line.take("requests")) {
        return false;
    }
    script.table.size = static_cast<std::size_t>(*count);
    script.table.hints = line.take("with") && line.take("hint");
    DriverAnswer answer;
    answer.request.kind = RequestKind::table;
    script.answers.push_back(answer);
    return read_circumstances(line, script.answers.back());
}

} // namespace

bool read_driver(ScenarioLine& line, DriverScript& script) {
    if (line.take("answers")) {
        return read_answer(line, script, read_content);
    }
    if (line.take("refuses")) {
        return read_answer(line, script, read_error);
    }
    if (line.take("accepts")) {
        return read_answer(line, script, read_nothing);
    }
    if (!line.take("describes")) {
        return false;
    }
    return line.take("request") ? read_private_request(line, script.table)
                                : read_table(line, script);
}

} // namespace bench
