// SPDX-License-Identifier: Apache-2.0
#include "writers/json_identity.hpp"

#include "model/identity.hpp"
#include "model/run_id.hpp"
#include "writers/json_figures.hpp"

namespace wivex::report {

namespace {

Json moment(const std::optional<Instant>& instant) {
    return text_or_null(instant ? rfc3339(*instant) : "");
}

} // namespace

Json json_identity(const Log& log) {
    const Identity& identity = log.identity;
    Json object = Json::object();
    for (const NamedText& row : identity_texts()) {
        object[std::string(row.name)] = text_or_null(identity.*row.text);
    }
    object["mac"] = text_or_null(identity_mac(log));
    object["attempt"] = identity.attempt == 0 ? Json(nullptr) : Json(identity.attempt);
    Json facts = Json::object();
    for (const auto& [key, value] : identity.facts) {
        facts[key] = value;
    }
    object["facts"] = std::move(facts);
    object["warnings"] = identity_warnings(log);
    return object;
}

Json json_of_run(const Log& log, const Run& run) {
    return {{"id", run_id(log, run)},
            {"began_at", moment(run.when.began)},
            {"ended_at", moment(run.when.ended)},
            {"zone_assumed", run.when.zone_assumed},
            {"clock_jumps", run.when.jumps.count}};
}

} // namespace wivex::report
