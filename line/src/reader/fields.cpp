// SPDX-License-Identifier: Apache-2.0
#include "reader/fields.hpp"

#include <algorithm>
#include <cmath>

namespace wivex::line {

namespace {

constexpr std::int64_t most_count = 1'000'000'000'000;
// No figure of a run comes near; a larger one would spoil every sum.
constexpr double most_figure = 1e9;

// Databases refuse the first, terminals and tables suffer from the rest.
bool has_control(const std::string& text) {
    return std::ranges::any_of(text, [](char letter) {
        const auto byte = static_cast<unsigned char>(letter);
        return byte < 0x20 || byte == 0x7f;
    });
}

const Json& nothing(Json::value_t type) {
    static const Json empty_object = Json::object();
    static const Json empty_list = Json::array();
    return type == Json::value_t::object ? empty_object : empty_list;
}

} // namespace

Fields::Fields(const Json& object, std::string where, std::string& problem)
    : object_(object), where_(std::move(where)), problem_(problem) {
    if (!object.is_object() && problem_.empty()) {
        problem_ = (where_.empty() ? "the document" : where_) + " is no object";
    }
}

std::string Fields::place(const char* name) const {
    return where_.empty() ? name : where_ + "." + name;
}

void Fields::complain(const char* name, const char* what) {
    if (problem_.empty()) {
        problem_ = place(name) + " " + what;
    }
}

const Json* Fields::find(const char* name) const {
    if (!problem_.empty()) {
        return nullptr;
    }
    const auto found = object_.find(name);
    return found == object_.end() || found->is_null() ? nullptr : &*found;
}

Text Fields::text(const char* name, std::size_t most) {
    const Json* const value = find(name);
    if (value == nullptr) {
        return {};
    }
    if (!value->is_string()) {
        complain(name, "is no text");
        return {};
    }
    const auto& text = value->get_ref<const std::string&>();
    if (text.size() > most) {
        complain(name, "is too long");
    } else if (has_control(text)) {
        complain(name, "holds control characters");
    }
    return text.empty() || !problem_.empty() ? Text() : Text(text);
}

Figure Fields::figure(const char* name) {
    const Json* const value = find(name);
    if (value == nullptr) {
        return {};
    }
    const double number = value->is_number() ? value->get<double>() : std::nan("");
    if (!(std::fabs(number) <= most_figure)) {
        complain(name, "is no number, or beyond all bounds");
        return {};
    }
    return number;
}

std::optional<std::int64_t> Fields::count(const char* name) {
    const Json* const value = find(name);
    if (value == nullptr) {
        return {};
    }
    if (!value->is_number_unsigned() ||
        value->get<std::uint64_t>() > static_cast<std::uint64_t>(most_count)) {
        complain(name, "is no whole number from 0 on");
        return {};
    }
    return value->get<std::int64_t>();
}

bool Fields::flag(const char* name) {
    const Json* const value = find(name);
    if (value != nullptr && !value->is_boolean()) {
        complain(name, "is neither true nor false");
        return false;
    }
    return value != nullptr && value->get<bool>();
}

const Json& Fields::object(const char* name) {
    const Json* const value = find(name);
    if (value != nullptr && !value->is_object()) {
        complain(name, "is no object");
    }
    return value != nullptr && value->is_object() ? *value : nothing(Json::value_t::object);
}

const Json& Fields::list(const char* name) {
    const Json* const value = find(name);
    if (value != nullptr && !value->is_array()) {
        complain(name, "is no list");
    }
    return value != nullptr && value->is_array() ? *value : nothing(Json::value_t::array);
}

std::string Fields::required_text(const char* name) {
    const Text value = text(name);
    if (!value) {
        complain(name, "is missing");
    }
    return value.value_or("");
}

std::int64_t Fields::required_count(const char* name) {
    const std::optional<std::int64_t> value = count(name);
    if (!value) {
        complain(name, "is missing");
    }
    return value.value_or(0);
}

} // namespace wivex::line
