// SPDX-License-Identifier: Apache-2.0
#include "reader/json_walker.hpp"

#include "common/printable.hpp"

#include <nlohmann/json.hpp>
#include <vector>

namespace wivex::report {

/// Keeps the path while the parser tells what it sees.
class JsonEvents : public nlohmann::json_sax<nlohmann::json> {
public:
    explicit JsonEvents(JsonWalker& walker) : walker_(walker) {}

    bool null() override {
        begin_value();
        return true;
    }
    bool boolean(bool /*value*/) override {
        return null();
    }
    bool number_integer(number_integer_t value) override {
        return number(static_cast<double>(value));
    }
    bool number_unsigned(number_unsigned_t value) override {
        return number(static_cast<double>(value));
    }
    bool number_float(number_float_t value, const string_t& /*text*/) override {
        return number(value);
    }
    bool string(string_t& value) override {
        begin_value();
        return walker_.take_text(path_, value);
    }
    bool binary(binary_t& /*value*/) override {
        return null();
    }
    bool start_object(std::size_t /*size*/) override {
        return open(false);
    }
    bool start_array(std::size_t /*size*/) override {
        return open(true);
    }
    bool key(string_t& name) override {
        constexpr std::size_t longest_name = 64;
        path_.resize(levels_.back().length);
        // A name that no member of the format has must not look like a path.
        const bool plain = name.size() <= longest_name &&
                           name.find_first_of("/*") == std::string::npos && !name.empty();
        path_ += plain ? "/" + name : "/?";
        return true;
    }
    bool end_object() override {
        path_.resize(levels_.back().length);
        levels_.pop_back();
        return walker_.end_of(path_);
    }
    bool end_array() override {
        levels_.pop_back();
        return true;
    }
    bool parse_error(std::size_t position, const std::string& /*token*/,
                     const nlohmann::detail::exception& /*error*/) override {
        return walker_.refuse("no valid JSON near byte " + std::to_string(position));
    }

private:
    struct Level {
        std::size_t length;
        bool is_array;
    };

    // Of an object's member the key has made the path.
    void begin_value() {
        if (!levels_.empty() && levels_.back().is_array) {
            path_.resize(levels_.back().length);
            path_ += "/*";
        }
    }

    bool number(double value) {
        begin_value();
        return walker_.take_number(path_, value);
    }

    bool open(bool is_array) {
        begin_value();
        if (levels_.size() == JsonWalker::deepest) {
            return walker_.refuse("it is nested too deep");
        }
        levels_.push_back({path_.size(), is_array});
        return true;
    }

    JsonWalker& walker_;
    std::string path_;
    std::vector<Level> levels_;
};

std::string JsonWalker::walk(std::string_view text) {
    problem_.clear();
    JsonEvents events(*this);
    const bool good = nlohmann::json::sax_parse(text, &events);
    return good || !problem_.empty() ? problem_ : "no valid JSON";
}

bool JsonWalker::refuse(std::string_view what) {
    if (problem_.empty()) {
        problem_ = printable(what);
    }
    return false;
}

} // namespace wivex::report
