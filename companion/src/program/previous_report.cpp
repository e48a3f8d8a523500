// SPDX-License-Identifier: Apache-2.0
#include "program/previous_report.hpp"

#include "common/printable.hpp"

#include <fstream>
#include <nlohmann/json.hpp>
#include <vector>

namespace wivex::report {

namespace {

using Json = nlohmann::json;

// The identity stands near the begin of the document.
constexpr std::streamsize most_read = 65536;
constexpr std::size_t longest_value = 256;

// Walks through the document and stops behind its identity, so that the rest is never held.
class IdentityFinder : public nlohmann::json_sax<Json> {
public:
    explicit IdentityFinder(Identity& identity) : identity_(identity) {}

    bool null() override {
        return true;
    }
    bool boolean(bool /*value*/) override {
        return true;
    }
    bool number_integer(number_integer_t /*value*/) override {
        return true;
    }
    bool number_unsigned(number_unsigned_t /*value*/) override {
        return true;
    }
    bool number_float(number_float_t /*value*/, const string_t& /*text*/) override {
        return true;
    }
    bool binary(binary_t& /*value*/) override {
        return true;
    }
    bool string(string_t& value) override {
        if (in_identity_ && depth_ == 2 && value.size() <= longest_value && is_printable(value)) {
            if (key_ == "serial") {
                identity_.previous_serial = value;
            } else if (key_ == "mac") {
                identity_.previous_mac = mac_address(value);
            }
        }
        return true;
    }
    bool key(string_t& value) override {
        key_ = value;
        return true;
    }
    bool start_object(std::size_t /*elements*/) override {
        ++depth_;
        in_identity_ = in_identity_ || (depth_ == 2 && key_ == "identity");
        return true;
    }
    bool end_object() override {
        --depth_;
        return !(in_identity_ && depth_ == 1);
    }
    bool start_array(std::size_t /*elements*/) override {
        ++depth_;
        return true;
    }
    bool end_array() override {
        --depth_;
        return true;
    }
    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const nlohmann::detail::exception& /*error*/) override {
        return false;
    }

private:
    Identity& identity_;
    std::string key_;
    int depth_ = 0;
    bool in_identity_ = false;
};

} // namespace

void take_previous_report(std::string_view report, Identity& identity) {
    IdentityFinder finder(identity);
    // It never reads to the end, so the result says nothing.
    static_cast<void>(Json::sax_parse(report, &finder));
}

void read_previous_report(const std::string& folder, Identity& identity) {
    std::ifstream file(folder + "/run.json", std::ios::binary);
    std::vector<char> begin(most_read);
    file.read(begin.data(), most_read);
    take_previous_report({begin.data(), static_cast<std::size_t>(file.gcount())}, identity);
}

} // namespace wivex::report
