// SPDX-License-Identifier: Apache-2.0
#include "writers/junit_identity.hpp"

#include "model/identity.hpp"
#include "model/run_id.hpp"

namespace wivex::report {

void write_identity(JunitSuite& suite, const Log& log, const Run& run) {
    const Identity& identity = log.identity;
    for (const NamedText& row : identity_texts()) {
        const bool mac = row.text == &Identity::mac;
        suite.property(std::string(row.name), mac ? identity_mac(log) : identity.*row.text);
    }
    suite.property("attempt", identity.attempt == 0 ? "" : std::to_string(identity.attempt));
    for (const auto& [key, value] : identity.facts) {
        suite.property("fact." + key, value);
    }
    std::size_t number = 0;
    for (const std::string& warning : identity_warnings(log)) {
        ++number;
        suite.property("identity_warning_" + std::to_string(number), warning);
    }
    suite.property("run_id", run_id(log, run));
    suite.property("began_at", run.when.began ? rfc3339(*run.when.began) : "");
    suite.property("ended_at", run.when.ended ? rfc3339(*run.when.ended) : "");
}

} // namespace wivex::report
