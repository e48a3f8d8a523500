// SPDX-License-Identifier: Apache-2.0
#include "callers.hpp"

#include "model/limit_text.hpp"
#include "model/limit_verdict.hpp"
#include "model/run_id.hpp"
#include "model/verdict.hpp"
#include "reader/run_reader.hpp"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace report_test {

namespace {

using namespace wivex::report;

struct Caller {
    std::string_view who;
    /// Copied for each console, because the table of texts need not be sorted again and again.
    RunReader reader;
    /// Callers of one unit and attempt see the same ids, others do not.
    int unit;
};

std::vector<Limit> limits() {
    std::vector<Limit> list;
    for (const char* const limit : {"failures<=0", "warnings<=0", "throughput>=0"}) {
        if (!add_limit(list, limit).empty()) {
            throw std::invalid_argument(limit);
        }
    }
    return list;
}

Identity named(const std::string& serial, std::uint32_t attempt = 0) {
    Identity identity;
    identity.serial = serial;
    identity.attempt = attempt;
    return identity;
}

Identity with_all_the_rest(Identity identity) {
    identity.part = "passed";
    identity.station = "line 3";
    identity.operator_name = "Ann";
    identity.kernel = "6.1.0";
    identity.driver = "bcmdhd";
    identity.facts = {{"verdict", "passed"}, {"batch", "7"}};
    identity.previous_serial = "4711";
    identity.previous_mac = "02:00:00:00:00:01";
    return identity;
}

Identity told_by_device(Identity identity) {
    identity.mac = "02:00:00:00:00:01";
    return identity;
}

Caller caller(std::string_view who, int unit, const Identity& identity) {
    ReaderOptions options;
    options.identity = identity;
    options.limits = limits();
    return {who, RunReader(options), unit};
}

const std::vector<Caller>& callers() {
    static const std::vector<Caller> list{
        caller("nobody", 0, {}),
        caller("a serial number", 1, named("4711")),
        caller("its second attempt", 2, named("4711", 2)),
        caller("everything", 1, with_all_the_rest(told_by_device(named("4711")))),
        caller("another serial number", 3, named("4712")),
        caller("a station", 0, with_all_the_rest({})),
        caller("the device", 4, told_by_device({})),
    };
    return list;
}

RunReader read_by(const RunReader& fresh, const std::string& console) {
    RunReader reader = fresh;
    reader.feed(console);
    reader.finish();
    return reader;
}

// The limit of the throughput is left out: a good run of most modes has none.
bool counts_are_kept(const Log& log) {
    const std::vector<LimitResult> results = judge_limits(log);
    return std::ranges::all_of(results, [](const LimitResult& result) {
        return !result.limit.is_count() || result.verdict == LimitVerdict::within;
    });
}

Shown shown(const Log& log) {
    return {judge(log) == RunVerdict::passed, counts_are_kept(log)};
}

std::vector<std::string> ids_of(const Log& log) {
    std::vector<std::string> ids;
    for (const Run& run : log.runs) {
        ids.push_back(run_id(log, run));
    }
    return ids;
}

// What a caller has seen, and what is wrong with the ids among all that were seen before.
struct Seen {
    const Caller* caller;
    std::vector<std::string> ids;
};

std::string wrong_ids(const std::vector<Seen>& before, const Seen& now) {
    if (std::set<std::string>(now.ids.begin(), now.ids.end()).size() != now.ids.size()) {
        return "two runs have one id";
    }
    for (const Seen& other : before) {
        const bool same_unit = other.caller->unit == now.caller->unit;
        if (!now.ids.empty() && (other.ids == now.ids) != same_unit) {
            return (same_unit ? "other ids than of " : "the ids of ") +
                   std::string(other.caller->who);
        }
    }
    return {};
}

bool green_without_limits(const std::string& console) {
    static const RunReader fresh;
    return judge(read_by(fresh, console).log()) == RunVerdict::passed;
}

} // namespace

std::size_t caller_count() {
    return callers().size();
}

Shown shown_as(const std::string& console, std::size_t caller) {
    return shown(read_by(callers().at(caller % caller_count()).reader, console).log());
}

std::string wrong_by_caller(const std::string& console) {
    const Shown as_nobody = shown_as(console);
    std::vector<Seen> seen;
    for (const Caller& caller : callers()) {
        const RunReader reader = read_by(caller.reader, console);
        const Seen now{&caller, ids_of(reader.log())};
        const bool changed = shown(reader.log()) != as_nobody;
        const std::string wrong = changed ? "another verdict" : wrong_ids(seen, now);
        if (!wrong.empty()) {
            return std::string(caller.who) + ": " + wrong;
        }
        seen.push_back(now);
    }
    return green_without_limits(console) == as_nobody.green ? "" : "limits: another verdict";
}

} // namespace report_test
