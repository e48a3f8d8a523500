// SPDX-License-Identifier: Apache-2.0
// What each text of the tool does to the model.

#include "console/arguments.hpp"
#include "figures.hpp"
#include "printable.hpp"
#include "reader/run_reader.hpp"

namespace wivex::report {

namespace {

constexpr std::size_t most_unknown_keys = 32;

// The build as the banner names it.
std::string build_of(const Finding& finding) {
    std::string_view rest = finding.argument;
    while (rest.ends_with(' ')) {
        rest.remove_suffix(1);
    }
    return std::string(finding.row->text.substr(tool_prefix.size())) + printable(rest, 80);
}

} // namespace

void RunReader::take_finding(const Finding& finding) {
    const TextRow& row = *finding.row;
    if (row.sign == Sign::run_begins) {
        begin_run();
        run_->evidence.began = true;
        run_->device.build = build_of(finding);
        return;
    }
    open_what_is_missing(finding);
    if (run_ == nullptr) {
        return;
    }
    if (run_->mode == Mode::unknown) {
        run_->mode = row.mode;
    }
    run_->has_standard_error = run_->has_standard_error || told_on_standard_error(row);
    current_.mode_seen = current_.mode_seen || row.mode != Mode::unknown;
    switch (row.sign) {
    case Sign::known:
    case Sign::starting:
        return;
    case Sign::enter:
    case Sign::pass:
    case Sign::warn:
    case Sign::fail:
        if (current_.open) {
            take_verdict(finding);
        }
        return;
    default:
        take_about_device(finding);
    }
}

// A console may begin in the middle of a run, or have lost lines: what is only said in a run, or
// in an iteration, opens one.
void RunReader::open_what_is_missing(const Finding& finding) {
    const TextRow& row = *finding.row;
    const bool of_iteration = row.phase != Phase::none || row.cause != Cause::none;
    const bool of_start = row.sign == Sign::starting;
    if (!is_unmistakable(row)) {
        return;
    }
    const bool next_run =
        run_ != nullptr && run_->end != RunEnd::not_started &&
        ((run_over_ && (of_iteration || of_start)) || (of_start && run_->started != 0));
    if (run_ == nullptr || next_run) {
        begin_run();
    }
    if (run_over_) {
        return;
    }
    const bool module_again =
        row.phase == Phase::module &&
        (!current_.open || current_.moved_on ||
         (current_.was_judged(Phase::module) && row.sign != Sign::module_hint));
    const bool driver_again = row.phase == Phase::driver && current_.was_judged(Phase::driver);
    if (module_again || driver_again || (of_iteration && !current_.open)) {
        begin_iteration();
    }
}

void RunReader::take_verdict(const Finding& finding) {
    const TextRow& row = *finding.row;
    switch (row.sign) {
    case Sign::pass:
        current_.address_taken = current_.address_taken || row.phase == Phase::dhcp;
        current_.mode_passed = current_.mode_passed || row.mode == Mode::scan;
        judge(row.phase, Verdict::passed);
        return;
    case Sign::warn:
        current_.mode_passed = current_.mode_passed || row.cause == Cause::listing_empty;
        judge(row.phase, Verdict::warned);
        warn(row.cause);
        return;
    case Sign::fail:
        // The legacy mode goes on without an address.
        if (row.cause == Cause::dhcp_client && run_->mode == Mode::legacy) {
            enter(row.phase);
            return;
        }
        judge(row.phase, Verdict::failed);
        fail(row.cause);
        return;
    default:
        enter(row.phase);
    }
}

void RunReader::take_about_device(const Finding& finding) {
    const std::string_view argument = finding.argument;
    Device& device = run_->device;
    switch (finding.row->sign) {
    case Sign::single_iteration:
        run_->expected = 1;
        return;
    case Sign::config_path:
        device.config_file = printable(config_path_in(argument));
        return;
    case Sign::unknown_key:
        if (run_->unknown_keys.size() < most_unknown_keys) {
            run_->unknown_keys.push_back(printable(key_in(argument)));
        }
        return;
    case Sign::chip_type:
        enter(Phase::module);
        device.chip_type = static_cast<int>(read_number(argument).value_or(0));
        return;
    case Sign::chip_ids: {
        enter(Phase::module);
        const auto [vendor, product] = chip_ids_in(argument);
        device.vendor_id = printable(vendor, 40);
        device.product_id = printable(product, 40);
        return;
    }
    case Sign::module_hint:
        // Stands behind the line of an absent module.
        if (!current_.was_judged(Phase::module)) {
            judge(Phase::module, Verdict::failed);
            fail(Cause::module_absent);
        }
        return;
    case Sign::own_address:
        device.address = printable(lease_in(argument), 40);
        return;
    case Sign::mac_kernel:
        enter(Phase::mac);
        device.mac_kernel = printable(mac_in(argument), 20);
        return;
    case Sign::mac_chip:
        enter(Phase::mac);
        device.mac_chip = printable(mac_in(argument), 20);
        return;
    case Sign::mac_pair: {
        enter(Phase::mac);
        const auto [kernel, chip] = mac_pair_in(argument);
        device.mac_kernel = printable(kernel, 20);
        device.mac_chip = printable(chip, 20);
        return;
    }
    case Sign::loopback_status:
        enter(Phase::loopback);
        run_->untouched_loopbacks += current_.open && is_untouched_status(argument) ? 1 : 0;
        return;
    default:
        take_about_mode(finding);
    }
}

void RunReader::take_about_mode(const Finding& finding) {
    const TextRow& row = *finding.row;
    switch (row.sign) {
    case Sign::session_trouble:
        enter(Phase::session);
        current_.session_trouble = true;
        return;
    case Sign::connection_closed:
        if (!closed_by_mode(finding.argument) || !current_.open) {
            return;
        }
        ++current_.connections_closed;
        if (current_.phase == Phase::removal && current_.mode_passed) {
            current_.close_phase(Verdict::passed, moment());
        }
        if (current_.pending && ++current_.pending->connections_closed == 2) {
            commit_pending();
        }
        return;
    case Sign::peer_found:
        if (current_.phase == Phase::find) {
            judge(Phase::find, Verdict::passed);
        }
        return;
    case Sign::role_owner:
    case Sign::role_client:
        // Short words that anybody may print: only at the point where the role is awaited.
        if (run_->mode == Mode::device && current_.open && current_.phase == Phase::group) {
            current_.role_known = true;
            current_.owner = row.sign == Sign::role_owner;
            if (!current_.owner) {
                judge(Phase::group, Verdict::passed);
            }
        }
        return;
    case Sign::group_removed:
        if (current_.open) {
            take_group_removal();
        }
        return;
    default:
        take_progress(finding);
    }
}

void RunReader::take_progress(const Finding& finding) {
    const TextRow& row = *finding.row;
    switch (row.sign) {
    case Sign::mode_passed:
        if (!current_.open) {
            return;
        }
        current_.mode_passed = !current_.mode_failed;
        if (row.phase == Phase::disconnect) {
            judge(row.phase, Verdict::passed);
        } else {
            enter(row.phase);
        }
        return;
    case Sign::group_started:
        enter(row.phase);
        current_.mode_passed = current_.open && !current_.mode_failed;
        return;
    case Sign::client_connected:
        enter(row.phase);
        ++run_->clients_served;
        return;
    case Sign::iperf_done:
        if (current_.open) {
            judge(Phase::traffic, current_.traffic_seen ? Verdict::passed : Verdict::warned);
            if (!current_.traffic_seen) {
                warn(Cause::no_traffic_figure);
            }
        }
        return;
    case Sign::access_point_count:
        enter(Phase::scan);
        names_.expect(read_number(finding.argument).value_or(0));
        return;
    case Sign::prefix:
        enter(Phase::scan);
        names_.expect_matches(finding.argument);
        return;
    case Sign::match_count:
        enter(Phase::scan);
        return;
    default:
        take_ending(finding);
    }
}

void RunReader::take_group_removal() {
    if (current_.owner) {
        current_.mode_passed = !current_.mode_failed;
        judge(Phase::group, Verdict::passed);
        enter(Phase::removal);
    } else if (current_.address_taken && !current_.mode_failed) {
        enter(Phase::removal);
    } else if (!current_.mode_failed && run_->mode != Mode::go) {
        enter(Phase::session);
    }
}

void RunReader::take_ending(const Finding& finding) {
    switch (finding.row->sign) {
    case Sign::not_started:
        run_->end = RunEnd::not_started;
        run_over_ = true;
        return;
    case Sign::softap_end:
        end_iteration(true);
        run_->end = RunEnd::softap;
        run_->evidence.softap_line = printable(std::string(finding.row->text));
        run_over_ = true;
        return;
    case Sign::interrupted:
        interrupted();
        return;
    case Sign::killed:
        end_iteration(false);
        run_->end = RunEnd::killed;
        run_over_ = true;
        return;
    case Sign::after_interrupt:
        // Only an interrupt leads here, also when its own line was lost.
        if (run_->end == RunEnd::open || run_->end == RunEnd::finished) {
            interrupted();
        }
        return;
    case Sign::results_lost:
        run_->evidence.losses.add(
            printable(std::string(finding.row->text) + std::string(finding.argument)));
        return;
    case Sign::cleaned_up:
        end_of_results();
        run_->evidence.ended = run_->end == RunEnd::finished;
        return;
    case Sign::done:
        end_of_results();
        run_->evidence.ended = true;
        return;
    default:
        take_result(finding);
    }
}

void RunReader::take_result(const Finding& finding) {
    const Sign sign = finding.row->sign;
    if (sign != Sign::result_path && sign != Sign::result_unwritable &&
        sign != Sign::result_written && sign != Sign::run_over) {
        return;
    }
    end_of_results();
    if (sign == Sign::run_over) {
        return;
    }
    if (sign == Sign::result_unwritable) {
        run_->evidence.losses.add(printable(finding.row->text));
    }
    run_->result_written =
        run_->result_written || (sign == Sign::result_written && says_updated(finding.argument));
    const std::string_view path = result_path_in(finding.argument);
    if (!path.empty()) {
        run_->result_file = printable(path);
    }
}

} // namespace wivex::report
