// SPDX-License-Identifier: Apache-2.0
#include "writers/table_text.hpp"

#include <array>
#include <charconv>
#include <nlohmann/json.hpp>

namespace wivex::line {

namespace {

std::string quoted(const std::string& text) {
    if (!text.empty() && text.find_first_of(",\"\r\n") == std::string::npos &&
        text.front() != ' ' && text.back() != ' ') {
        return text;
    }
    std::string result = "\"";
    for (const char letter : text) {
        result += letter == '"' ? "\"\"" : std::string(1, letter);
    }
    return result + "\"";
}

// With as many places as the number needs to be read back.
std::string number_text(double value) {
    std::array<char, 40> text{};
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), end};
}

std::string cell(const Value& value) {
    if (const auto* const text = std::get_if<std::string>(&value)) {
        return quoted(*text);
    }
    if (const auto* const count = std::get_if<std::int64_t>(&value)) {
        return std::to_string(*count);
    }
    const auto* const figure = std::get_if<double>(&value);
    return figure == nullptr ? "" : number_text(*figure);
}

nlohmann::json json_value(const Value& value) {
    if (const auto* const text = std::get_if<std::string>(&value)) {
        return *text;
    }
    if (const auto* const count = std::get_if<std::int64_t>(&value)) {
        return *count;
    }
    const auto* const figure = std::get_if<double>(&value);
    return figure == nullptr ? nlohmann::json() : nlohmann::json(*figure);
}

} // namespace

std::string csv_line(const std::vector<Value>& values) {
    std::string line;
    for (std::size_t i = 0; i < values.size(); ++i) {
        line += (i == 0 ? "" : ",") + cell(values[i]);
    }
    return line + "\r\n";
}

std::string csv_head(const std::vector<std::string>& names) {
    return csv_line({names.begin(), names.end()});
}

std::string json_object(const std::vector<std::string>& names, const std::vector<Value>& values) {
    nlohmann::ordered_json object = nlohmann::ordered_json::object();
    for (std::size_t i = 0; i < names.size() && i < values.size(); ++i) {
        object[names[i]] = json_value(values[i]);
    }
    return object.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

} // namespace wivex::line
