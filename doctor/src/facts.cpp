// SPDX-License-Identifier: Apache-2.0
#include "facts.hpp"

#include "probe.hpp"
#include "run/start.hpp"
#include "tool_console.hpp"

namespace wivex::doctor {

Facts gather_facts(const Request& request) {
    Facts facts;
    facts.plan = request.plan;
    facts.scan_wanted = request.scan;
    if (const char* const path = chosen_config_path()) {
        facts.config_path = path;
        facts.config_failure = why_unreadable(facts.config_path);
    }
    if (!facts.config_failure.empty()) {
        return facts;
    }
    static_cast<void>(take_tool_output());
    if (!read_chosen_config(facts.config)) {
        facts.config_failure = "it cannot be read to its end";
    }
    static_cast<void>(take_tool_output());
    return facts;
}

} // namespace wivex::doctor
