// SPDX-License-Identifier: Apache-2.0
#include "model/weak_passes.hpp"

#include "common/words.hpp"

namespace wivex::report {

namespace {

constexpr int ath6kl_chip_type = 1;

std::uint32_t warnings(const Run& run, Cause cause) {
    return run.count(cause).warnings;
}

std::string times(std::uint32_t count) {
    return count_text(count, "time", "times");
}

std::uint32_t passed_loopbacks(const Run& run) {
    return run.verdicts.at(index_of(Phase::loopback)).at(static_cast<std::size_t>(Verdict::passed));
}

void add_scans(const Run& run, std::vector<std::string>& list) {
    if (const std::uint32_t count = warnings(run, Cause::listing_empty); count != 0) {
        list.push_back("The scan heard nothing (" + times(count) +
                       ") and counts as passed. This shows that a scan ran, not that the radio "
                       "hears anything.");
    }
    if (const std::uint32_t count = warnings(run, Cause::prefix_not_found); count != 0) {
        list.push_back("The scan heard no access point with the SSID prefix (" + times(count) +
                       ") and counts as passed.");
    }
}

void add_loopbacks(const Run& run, std::vector<std::string>& list) {
    if (run.device.chip_type == ath6kl_chip_type && passed_loopbacks(run) != 0) {
        list.push_back("The loopback of an ath6kl module passed (" + times(passed_loopbacks(run)) +
                       "). It reads no counter of the chip: the pass does not show that a packet "
                       "reached it.");
    }
    if (run.untouched_loopbacks != 0) {
        list.push_back("The loopback passed (" + times(run.untouched_loopbacks) +
                       ") with a status that the driver left as it was sent: the pass does not "
                       "show that packets came back.");
    }
}

void add_traffic(const Run& run, std::vector<std::string>& list) {
    const std::uint32_t count = warnings(run, Cause::no_traffic_figure);
    if (count == 0) {
        return;
    }
    const auto& behind = run.sub_causes.at(index_of(Cause::no_traffic_figure));
    std::string words = "iperf gave no figure (" + times(count);
    for (const SubCause sub_cause : {SubCause::iperf_missing, SubCause::no_traffic_server}) {
        const std::uint32_t told = behind.at(static_cast<std::size_t>(sub_cause));
        if (told != 0) {
            words += "; " + std::string(words_of(sub_cause)) + ": " + std::to_string(told);
        }
    }
    list.push_back(words + ") and counts as passed: no traffic was shown.");
}

// The run loop records only the codes of the mode's list.
void add_dropped_codes(const Run& run, std::vector<std::string>& list) {
    const int number = test_case_of(run.mode);
    std::uint32_t dropped = 0;
    for (const Cause cause : run.told_causes()) {
        dropped += test_case_of(cause, run.mode) == 0 ? run.count(cause).failures : 0;
    }
    if (number == 0 || dropped == 0) {
        return;
    }
    const std::string in_file =
        run.failures_of_test_case(number) == 0
            ? "The result file says \"Test case " + std::to_string(number) + " passed\" although "
            : "The result file leaves out that ";
    list.push_back(in_file + "the mode failed " + times(dropped) +
                   " with a code that it does not record.");
}

} // namespace

bool is_weak_pass(Cause cause) {
    return cause == Cause::listing_empty || cause == Cause::prefix_not_found ||
           cause == Cause::no_traffic_figure;
}

std::vector<std::string> weak_passes(const Run& run) {
    std::vector<std::string> list;
    add_scans(run, list);
    add_loopbacks(run, list);
    add_traffic(run, list);
    add_dropped_codes(run, list);
    return list;
}

} // namespace wivex::report
