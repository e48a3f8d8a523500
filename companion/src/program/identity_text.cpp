// SPDX-License-Identifier: Apache-2.0
#include "program/identity_text.hpp"

#include "common/bytes.hpp"
#include "common/printable.hpp"
#include "common/unique_file.hpp"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <vector>

namespace wivex::report {

namespace {

constexpr std::size_t longest_value = 256;
constexpr std::size_t longest_key = 64;
constexpr std::size_t most_facts = 64;
constexpr std::size_t largest_file = std::size_t{64} * 1024;
constexpr std::uint32_t most_attempts = 999999;
// What an error message shows of a value.
constexpr std::size_t shown = 40;

std::string problem_of(std::string_view what, std::string_view text, std::size_t longest) {
    const std::string name(what);
    if (text.empty()) {
        return name + " has no value";
    }
    if (text.size() > longest) {
        return name + " is longer than " + std::to_string(longest) + " bytes";
    }
    if (!is_printable(text)) {
        return name + " holds a control character, or is not UTF-8: " + printable(text, shown);
    }
    return {};
}

std::string set_text(std::string& member, std::string_view key, std::string_view value) {
    if (!member.empty()) {
        return std::string(key) + " is given twice";
    }
    std::string problem = problem_of(key, value, longest_value);
    if (problem.empty()) {
        member = value;
    }
    return problem;
}

std::string set_attempt(Identity& identity, std::string_view value) {
    if (identity.attempt != 0) {
        return "attempt is given twice";
    }
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    if (error != std::errc() || end != value.data() + value.size() || number == 0 ||
        number > most_attempts) {
        return "attempt is no number from 1 to " + std::to_string(most_attempts) + ": " +
               printable(value, shown);
    }
    identity.attempt = number;
    return {};
}

auto fact_with(Identity& identity, std::string_view key) {
    return std::ranges::find(identity.facts, key,
                             [](const auto& fact) -> const std::string& { return fact.first; });
}

std::string add_fact(Identity& identity, std::string_view text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) {
        return "a fact is KEY=VALUE, and not: " + printable(text, shown);
    }
    const std::string key(text.substr(0, equals));
    const std::string_view value = text.substr(equals + 1);
    if (key.empty()) {
        return "a fact has no key: " + printable(text, shown);
    }
    std::string problem = problem_of("the key of a fact", key, longest_key);
    if (problem.empty()) {
        problem = problem_of("the fact " + key, value, longest_value);
    }
    if (!problem.empty()) {
        return problem;
    }
    if (fact_with(identity, key) != identity.facts.end()) {
        return "the fact " + key + " is given twice";
    }
    if (identity.facts.size() == most_facts) {
        return "there are more than " + std::to_string(most_facts) + " facts";
    }
    identity.facts.emplace_back(key, value);
    return {};
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

std::string take_line(std::string_view line, Identity& identity) {
    line = trimmed(line);
    if (line.empty() || line.front() == '#') {
        return {};
    }
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) {
        return "not key=value: " + printable(line, shown);
    }
    return set_member(identity, trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
}

} // namespace

std::string set_member(Identity& identity, std::string_view key, std::string_view value) {
    struct Member {
        std::string_view key;
        std::string Identity::*text;
    };
    constexpr auto members = std::to_array<Member>({{"serial", &Identity::serial},
                                                    {"part", &Identity::part},
                                                    {"station", &Identity::station},
                                                    {"operator", &Identity::operator_name}});
    for (const Member& member : members) {
        if (member.key == key) {
            return set_text(identity.*member.text, key, value);
        }
    }
    if (key == "attempt") {
        return set_attempt(identity, value);
    }
    if (key == "fact") {
        return add_fact(identity, value);
    }
    return "unknown key '" + printable(key, shown) +
           "': there are serial, part, station, attempt, operator and fact";
}

std::string read_identity(std::string_view text, Identity& identity) {
    constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
    if (text.starts_with(byte_order_mark)) {
        text.remove_prefix(byte_order_mark.size());
    }
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::size_t length = std::min(text.find('\n'), text.size());
        const std::string problem = take_line(text.substr(0, length), identity);
        if (!problem.empty()) {
            return "line " + std::to_string(number) + ": " + problem;
        }
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return {};
}

std::string read_identity_file(const std::string& path, Identity& identity) {
    const UniqueFile file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    std::vector<char> buffer(largest_file + 1);
    std::size_t size = 0;
    long length = file.is_open() ? 1 : -1;
    while (length > 0 && size < buffer.size()) {
        length = read_some(file.get(), std::span(buffer).subspan(size));
        size += length > 0 ? static_cast<std::size_t>(length) : 0;
    }
    if (length < 0) {
        return "cannot read " + path + ": " + std::strerror(errno);
    }
    if (size > largest_file) {
        return path + ": larger than " + std::to_string(largest_file / 1024) + " KB";
    }
    const std::string problem = read_identity({buffer.data(), size}, identity);
    return problem.empty() ? "" : path + ": " + problem;
}

Identity overlaid(Identity under, const Identity& over) {
    for (const NamedText& row : identity_texts()) {
        if (!(over.*row.text).empty()) {
            under.*row.text = over.*row.text;
        }
    }
    under.attempt = over.attempt == 0 ? under.attempt : over.attempt;
    for (const auto& [key, value] : over.facts) {
        const auto known = fact_with(under, key);
        if (known == under.facts.end()) {
            under.facts.emplace_back(key, value);
        } else {
            known->second = value;
        }
    }
    under.warnings.insert(under.warnings.end(), over.warnings.begin(), over.warnings.end());
    return under;
}

} // namespace wivex::report
