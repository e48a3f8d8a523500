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
    bool boolean(bool value) override {
        return !begin_value() || walker_.take_flag(path_, value);
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
        return !begin_value() || walker_.take_text(path_, value);
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
        if (levels_.back().passed_over) {
            return true;
        }
        path_.resize(levels_.back().length);
        // A name that no member of the format has must not look like a path.
        const bool plain = name.size() <= longest_name &&
                           name.find_first_of("/*") == std::string::npos && !name.empty();
        path_ += '/';
        path_ += plain ? name : "?";
        walker_.name_ = name;
        passes_over_ = !walker_.wants(path_);
        return true;
    }
    bool end_object() override {
        return close(true);
    }
    bool end_array() override {
        return close(false);
    }
    bool parse_error(std::size_t position, const std::string& /*token*/,
                     const nlohmann::detail::exception& /*error*/) override {
        return walker_.refuse("no valid JSON near byte " + std::to_string(position));
    }

private:
    struct Level {
        std::size_t length;
        bool is_array;
        bool passed_over;
    };

    // Of an object's member the key has made the path. False when nobody wants the value.
    bool begin_value() {
        if (levels_.empty()) {
            return true;
        }
        if (levels_.back().is_array && !levels_.back().passed_over) {
            path_.resize(levels_.back().length);
            path_ += "/*";
        }
        return !passes_over_ && !levels_.back().passed_over;
    }

    bool number(double value) {
        return !begin_value() || walker_.take_number(path_, value);
    }

    bool open(bool is_array) {
        const bool wanted = begin_value();
        if (levels_.size() == JsonWalker::deepest) {
            return walker_.refuse("it is nested too deep");
        }
        levels_.push_back({path_.size(), is_array, !wanted});
        passes_over_ = false;
        return true;
    }

    bool close(bool is_object) {
        const Level level = levels_.back();
        levels_.pop_back();
        passes_over_ = false;
        if (!is_object || level.passed_over) {
            return true;
        }
        path_.resize(level.length);
        return walker_.end_of(path_);
    }

    JsonWalker& walker_;
    std::string path_;
    std::vector<Level> levels_;
    bool passes_over_ = false;
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
