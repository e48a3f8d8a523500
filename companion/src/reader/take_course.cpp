// SPDX-License-Identifier: Apache-2.0
// What the console says of the course of an iteration.
#include "reader/take.hpp"

namespace wivex::report {

namespace {

class CourseTaker {
public:
    CourseTaker(LogBuilder& builder, const ToolText& text)
        : builder_(builder), text_(text), run_(*builder.run()), current_(builder.iteration()) {}

    void operator()(const Step& step) const {
        if (!current_.open) {
            return;
        }
        switch (step.verdict) {
        case Verdict::passed:
            current_.address_taken = current_.address_taken || text_.phase == Phase::dhcp;
            current_.mode_passed = current_.mode_passed || text_.mode == Mode::scan;
            builder_.judge(text_.phase, Verdict::passed);
            return;
        case Verdict::warned:
            current_.mode_passed = current_.mode_passed || text_.cause == Cause::listing_empty;
            builder_.judge(text_.phase, Verdict::warned);
            builder_.warn(text_.cause);
            return;
        case Verdict::failed:
            take_failure();
            return;
        default:
            builder_.enter(text_.phase);
        }
    }

    void operator()(const ModuleHint& /*event*/) const {
        if (!current_.was_judged(Phase::module)) {
            builder_.judge(Phase::module, Verdict::failed);
            builder_.fail(Cause::module_absent);
        }
    }

    void operator()(const LoopbackStatus& status) const {
        builder_.enter(Phase::loopback);
        run_.untouched_loopbacks += current_.open && status.untouched ? 1 : 0;
    }

    void operator()(const SessionTrouble& /*event*/) const {
        builder_.enter(Phase::session);
        current_.session_trouble = true;
    }

    void operator()(const ConnectionClosed& closed) const {
        if (!closed.by_mode || !current_.open) {
            return;
        }
        ++current_.connections_closed;
        if (current_.phase == Phase::removal && current_.mode_passed) {
            builder_.close_phase(Verdict::passed);
        }
        if (current_.pending && ++current_.pending->connections_closed == 2) {
            builder_.commit_pending();
        }
    }

    void operator()(const PeerFound& /*event*/) const {
        if (current_.phase == Phase::find) {
            builder_.judge(Phase::find, Verdict::passed);
        }
    }

    // Other programs print these short words too: they count only where the role is awaited.
    void operator()(const RoleTold& role) const {
        if (run_.mode == Mode::device && current_.open && current_.phase == Phase::group) {
            current_.role_known = true;
            current_.owner = role.is_owner;
            if (!current_.owner) {
                builder_.judge(Phase::group, Verdict::passed);
            }
        }
    }

    void operator()(const GroupRemoved& /*event*/) const {
        if (!current_.open) {
            return;
        }
        if (current_.owner) {
            current_.mode_passed = !current_.mode_failed;
            builder_.judge(Phase::group, Verdict::passed);
            builder_.enter(Phase::removal);
        } else if (current_.address_taken && !current_.mode_failed) {
            builder_.enter(Phase::removal);
        } else if (!current_.mode_failed && run_.mode != Mode::go) {
            builder_.enter(Phase::session);
        }
    }

    void operator()(const GroupStarted& /*event*/) const {
        builder_.enter(text_.phase);
        current_.mode_passed = current_.open && !current_.mode_failed;
    }

    void operator()(const ClientConnected& /*event*/) const {
        builder_.enter(text_.phase);
        ++run_.clients_served;
    }

    void operator()(const ModePassed& /*event*/) const {
        if (!current_.open) {
            return;
        }
        current_.mode_passed = !current_.mode_failed;
        if (text_.phase == Phase::disconnect) {
            builder_.judge(text_.phase, Verdict::passed);
        } else {
            builder_.enter(text_.phase);
        }
    }

    void operator()(const IperfDone& /*event*/) const {
        if (!current_.open) {
            return;
        }
        builder_.judge(Phase::traffic, current_.traffic_seen ? Verdict::passed : Verdict::warned);
        if (!current_.traffic_seen) {
            builder_.warn(Cause::no_traffic_figure);
        }
    }

    void operator()(const NamesFollow& names) const {
        builder_.enter(Phase::scan);
        builder_.console().names().expect(names.count);
    }

    void operator()(const NetworkNamed& network) const {
        builder_.enter(text_.phase);
        current_.heard.look_for(network.ssid);
    }

    void operator()(const MatchesFollow& matches) const {
        builder_.enter(Phase::scan);
        builder_.console().names().expect_matches(matches.prefix);
    }

private:
    void take_failure() const {
        // The legacy mode goes on without an address.
        if (text_.cause == Cause::dhcp_client && run_.mode == Mode::legacy) {
            builder_.enter(text_.phase);
            return;
        }
        builder_.judge(text_.phase, Verdict::failed);
        builder_.fail(text_.cause);
    }

    LogBuilder& builder_;
    const ToolText& text_;
    Run& run_;
    OpenIteration& current_;
};

} // namespace

void take_course(LogBuilder& builder, const ToolText& text, const CourseEvent& event) {
    std::visit(CourseTaker(builder, text), event);
}

} // namespace wivex::report
