// SPDX-License-Identifier: Apache-2.0
#include "fault_plan.hpp"

#include <algorithm>
#include <iterator>
#include <random>

namespace faults {

namespace {

constexpr std::size_t shown_of_the_arguments = 70;

} // namespace

std::vector<Fault> all_faults(const Mode& mode, const std::vector<Call>& calls) {
    std::vector<Fault> faults;
    for (const Call& call : calls) {
        for (const Failure& failure : failures_of(call)) {
            faults.push_back({&mode, call, failure});
        }
    }
    return faults;
}

std::vector<Fault> choose(std::vector<Fault> faults, std::size_t count, unsigned seed) {
    if (count == 0 || count >= faults.size()) {
        return faults;
    }
    std::vector<Fault> chosen;
    std::sample(std::make_move_iterator(faults.begin()), std::make_move_iterator(faults.end()),
                std::back_inserter(chosen), count, std::mt19937(seed));
    return chosen;
}

std::string tracer_options(const Fault& fault) {
    const std::string& name = fault.call.name;
    return "-y -e trace=" + name + " -e inject=" + name + ":" + fault.failure +
           ":when=" + std::to_string(fault.call.nth);
}

std::string description(const Fault& fault) {
    const std::string caller = fault.call.caller.empty() ? "" : " in " + fault.call.caller;
    return std::string(fault.mode->name) + ": " + fault.call.name + " " +
           std::to_string(fault.call.nth) + " (" +
           fault.call.arguments.substr(0, shown_of_the_arguments) + ")" + caller + ": " +
           fault.failure;
}

} // namespace faults
