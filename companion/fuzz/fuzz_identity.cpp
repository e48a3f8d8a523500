// SPDX-License-Identifier: Apache-2.0
// Any bytes as an identity file, and as the report that stood in the folder before: what is taken
// is printable and short, and every file that shows it is well-formed.

#include "checks.hpp"
#include "common/printable.hpp"
#include "program/identity_text.hpp"
#include "program/previous_report.hpp"
#include "reader/run_reader.hpp"
#include "writers/json_writer.hpp"

#include <cstdint>
#include <string>
#include <string_view>

namespace {

using namespace report_fuzz;
using namespace wivex::report;

void check_identity(const Identity& identity) {
    for (const NamedText& row : identity_texts()) {
        const std::string& text = identity.*row.text;
        require(text.size() <= 256 && is_printable(text));
    }
    require(identity.facts.size() <= 64);
    for (const auto& [key, value] : identity.facts) {
        require(!key.empty() && key.size() <= 64 && is_printable(key));
        require(!value.empty() && value.size() <= 256 && is_printable(value));
    }
    require(identity.previous_serial.size() <= 256 && is_printable(identity.previous_serial));
}

void check_files(const Log& log) {
    check_markup(log);
    Identity again;
    take_previous_report(write_json(log), again);
    require(again.previous_serial == log.identity.serial);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    Identity identity;
    take_previous_report(text, identity);
    const std::string problem = read_identity(text, identity);
    require(is_printable(problem));
    check_identity(identity);
    ReaderOptions options;
    options.identity = identity;
    RunReader reader(options);
    reader.feed("[WIFI]WIVEX2\n[WIFI]MAC from kernel ioctl :- 02:00:00:00:00:01\n");
    reader.finish();
    check_files(reader.log());
    return 0;
}
