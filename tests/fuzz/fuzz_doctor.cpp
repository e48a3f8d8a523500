// SPDX-License-Identifier: Apache-2.0
// A configuration file through wivex-doctor's eyes: whatever stands in it, every mode gets a whole
// report of printable texts, and a key that the tool does not know is never good.

#include "checks.hpp"
#include "common/process_state.hpp"
#include "memory_file.hpp"
#include "report.hpp"
#include "require.hpp"
#include "tool_console.hpp"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

using namespace wivex::doctor;

bool is_printable(const std::string& report) {
    return std::all_of(report.begin(), report.end(), [](char character) {
        return character == '\n' || (character >= ' ' && character <= '~');
    });
}

Facts read_facts(const std::string& path, const Request& request) {
    wivex::run_options = wivex::RunOptions();
    wivex::run_options.config_choice = -1;
    wivex::run_options.user_config_file = path;
    return gather_facts(request);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::MemoryFile file;
    file.fill({reinterpret_cast<const char*>(data), size});
    Point harmless("harmless");
    Point harmful("harmful");
    harmful.bad("found", "prints", "mend");
    for (const char mode : std::string_view("Swdgc")) {
        Request request;
        request.plan.mode = mode;
        request.plan.loopback = mode == 'S';
        const Facts facts = read_facts(file.path(), request);
        const Point point = check_configuration(facts, {harmless, harmful, harmless});
        fuzz::require(is_printable(as_text(request, {point}, false)));
        fuzz::require(is_printable(as_json(request, {point})));
        fuzz::require(point.state() == State::bad ||
                      as_text(request, {point}, false).find("unknown key") == std::string::npos);
    }
    return 0;
}
