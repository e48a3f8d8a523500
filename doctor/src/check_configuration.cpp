// SPDX-License-Identifier: Apache-2.0
// The configuration file, line by line. What a value does to the run is asked of the point that
// depends on it; values that nothing else shows are judged here.
#include "check_values.hpp"
#include "checks.hpp"
#include "config_lines.hpp"
#include "key_uses.hpp"
#include "predicted_texts.hpp"
#include "run/config_file.hpp"
#include "text.hpp"

#include <algorithm>

namespace wivex::doctor {

namespace {

using namespace predicted;
constexpr int most_unknown_keys = 10;
constexpr const char* long_line = "line is longer than 511 characters, the rest is skipped";

std::string at_line(const Setting& setting) {
    return "line " + std::to_string(setting.line) + ": ";
}

class ConfigurationCheck {
public:
    ConfigurationCheck(const Facts& facts, const Consequences& consequences, Point& point)
        : facts_(facts), consequences_(consequences), point_(point),
          lines_(read_config_lines(facts.config_path)) {}

    void judge() {
        if (!lines_.failure.empty()) {
            point_.unknown("its lines cannot be judged: " + lines_.failure, "", "ask again");
        }
        for (const Setting& setting : lines_.settings) {
            judge_setting(setting);
        }
        tell_further_unknown_keys();
        tell_carriage_returns();
        tell_lines_without_equals();
        tell_unread_keys();
        judge_values(facts_, point_);
    }

private:
    std::string edit(const Setting& setting, const std::string& script) const {
        return "sed -i '" + std::to_string(setting.line) + script + "' " +
               shell_word(facts_.config_path);
    }

    bool holds(const Setting& setting) const {
        return last_setting(lines_, setting.key) == &setting;
    }

    // What the run prints because the value is what it is; nothing when it does no harm.
    Remark consequence_of(const KeyUse& use) const {
        switch (use.kind) {
        case KeyKind::device_list:
            return {consequences_.module.state(), {}, consequences_.module.first_prints(), {}};
        case KeyKind::interface:
            return {consequences_.driver.state(), {}, consequences_.driver.first_prints(), {}};
        case KeyKind::control_folder:
            return {
                consequences_.supplicant.state(), {}, consequences_.supplicant.first_prints(), {}};
        default:
            return consequence_of_value(use, facts_);
        }
    }

    // A remark as grave as what comes of it.
    void tell(const Setting& setting, const std::string& what, const std::string& mend) {
        const KeyUse* const use = find_key_use(setting.key);
        if (use == nullptr || !is_read(*use, facts_.plan) || !holds(setting)) {
            point_.note(at_line(setting) + what, mend);
            return;
        }
        Remark remark = consequence_of(*use);
        remark.found = at_line(setting) + what;
        remark.mend = mend;
        point_.remarks.push_back(remark);
    }

    void tell_unknown_key(const Setting& setting) {
        if (++unknown_keys_ > most_unknown_keys) {
            return;
        }
        const std::string_view nearest = nearest_key(setting.key);
        const bool only_blanks = trimmed(setting.key) == nearest && !nearest.empty();
        std::string what = at_line(setting) + "unknown key " + quoted(setting.key);
        if (only_blanks) {
            what += ": the blanks around it belong to it";
        } else if (!nearest.empty()) {
            what += "; is " + std::string(nearest) + " meant?";
        }
        const std::string mend =
            nearest.empty()
                ? edit(setting, "s/^/#/")
                : edit(setting, std::string("s/^[^=]*=") + (only_blanks ? "[ \\t]*" : "") + "/" +
                                    std::string(nearest) + "=/");
        point_.bad(what, unknown_key, mend);
    }

    void judge_text(const Setting& setting) {
        const std::string_view value = setting.value;
        const std::string_view bare = trimmed(value);
        if (value.ends_with('\r')) {
            carriage_returns_.push_back(&setting);
        } else if (value != bare) {
            const bool behind = value.starts_with(bare.substr(0, 1)) && !bare.empty();
            tell(setting,
                 setting.key + " has a blank " + (behind ? "behind" : "in front of") +
                     " its value, and it belongs to the value: " + quoted(value),
                 edit(setting, "s/=[ \\t]*/=/; " + std::to_string(setting.line) + "s/[ \\t]*$//"));
        } else if (bare.size() >= 2 && (bare.front() == '"' || bare.front() == '\'') &&
                   bare.front() == bare.back()) {
            tell(setting, setting.key + " has quotes, which belong to the value: " + quoted(value),
                 edit(setting, R"(s/=.\(.*\).$/=\1/)"));
        }
    }

    void judge_setting(const Setting& setting) {
        if (setting.cut) {
            point_.bad(at_line(setting) + "more than 511 characters; the rest does not count",
                       long_line, "shorten it");
        }
        if (lookup_config_key(setting.key) == unknown_config_key) {
            tell_unknown_key(setting);
            return;
        }
        if (!holds(setting)) {
            const Setting* const later = last_setting(lines_, setting.key);
            point_.note(at_line(setting) + setting.key + " is set again in line " +
                        std::to_string(later->line) + ", which holds");
        }
        judge_text(setting);
    }

    // One remark for a file that was written on another system.
    void tell_carriage_returns() {
        if (carriage_returns_.empty()) {
            return;
        }
        Remark worst;
        for (const Setting* setting : carriage_returns_) {
            const KeyUse* const use = find_key_use(setting->key);
            if (use == nullptr || !is_read(*use, facts_.plan) || !holds(*setting)) {
                continue;
            }
            const Remark remark = consequence_of(*use);
            if (remark.state > worst.state) {
                worst = remark;
            }
        }
        const Setting& first = *carriage_returns_.front();
        // A name or a pass phrase may end with a blank, but hardly with this.
        if (worst.state == State::not_known) {
            worst.state = State::bad;
        }
        worst.found = at_line(first) + "a carriage return ends the value of " + first.key;
        if (carriage_returns_.size() > 1) {
            worst.found +=
                ", and of " + std::to_string(carriage_returns_.size() - 1) + " more keys";
        }
        worst.mend = "sed -i 's/\\r$//' " + shell_word(facts_.config_path);
        point_.remarks.push_back(worst);
    }

    // Of a file that is no configuration at all.
    void tell_further_unknown_keys() {
        if (unknown_keys_ > most_unknown_keys) {
            point_.bad("and " + std::to_string(unknown_keys_ - most_unknown_keys) +
                           " more unknown keys: is this the right file?",
                       unknown_key, "name another: -F/path/of/the.cfg");
        }
    }

    void tell_lines_without_equals() {
        if (!lines_.without_equals.empty()) {
            point_.note(
                "line " + std::to_string(lines_.without_equals.front()) +
                ": no \"=\" in it, so it sets nothing" +
                (lines_.without_equals.size() > 1
                     ? "; so do " + std::to_string(lines_.without_equals.size() - 1) + " more lines"
                     : ""));
        }
    }

    void tell_unread_keys() {
        std::string unread;
        for (const Setting& setting : lines_.settings) {
            const bool known = lookup_config_key(setting.key) != unknown_config_key;
            if (known && find_key_use(setting.key) == nullptr && holds(setting)) {
                unread += (unread.empty() ? "" : ", ") + setting.key;
            }
        }
        if (!unread.empty()) {
            point_.note("no mode reads " + unread);
        }
    }

    const Facts& facts_;
    const Consequences& consequences_;
    Point& point_;
    ConfigLines lines_;
    std::vector<const Setting*> carriage_returns_;
    int unknown_keys_ = 0;
};

} // namespace

Point check_configuration(const Facts& facts, const Consequences& consequences) {
    Point point("configuration");
    point.found = printable(facts.config_path);
    if (facts.config_path.empty()) {
        point.found = "no file: the answer to -F chooses none, and every value is empty";
        judge_values(facts, point);
        return point;
    }
    if (!facts.config_failure.empty()) {
        point.bad(facts.config_failure, configuration_problem,
                  "put the file there, or name another: -F/path/of/the.cfg");
        return point;
    }
    ConfigurationCheck(facts, consequences, point).judge();
    return point;
}

} // namespace wivex::doctor
