// SPDX-License-Identifier: Apache-2.0
// What the console says of the end of a run and of its result file.
#include "common/printable.hpp"
#include "reader/take.hpp"

namespace wivex::report {

namespace {

class EndingTaker {
public:
    explicit EndingTaker(LogBuilder& builder) : builder_(builder), run_(*builder.run()) {}

    void operator()(const NotStarted& /*ending*/) const {
        builder_.leave_loop(RunEnd::not_started);
    }

    void operator()(const SoftapEnd& end) const {
        builder_.end_iterations(RunEnd::softap, true);
        run_.evidence.softap_line = printable(end.line);
    }

    void operator()(const Interrupted& /*ending*/) const {
        builder_.interrupted();
    }

    void operator()(const AfterInterrupt& /*ending*/) const {
        if (run_.end == RunEnd::open || run_.end == RunEnd::finished) {
            builder_.interrupted();
        }
    }

    void operator()(const Killed& /*ending*/) const {
        builder_.end_iterations(RunEnd::killed, false);
    }

    void operator()(const ResultsLost& lost) const {
        run_.evidence.losses.add(printable(lost.line));
    }

    void operator()(const ResultPath& result) const {
        builder_.end_of_results();
        keep_path(result.path);
    }

    void operator()(const ResultUnwritable& result) const {
        builder_.end_of_results();
        run_.evidence.losses.add(printable(result.line));
        keep_path(result.path);
    }

    void operator()(const ResultWritten& result) const {
        builder_.end_of_results();
        run_.result_written = run_.result_written || result.announced;
        keep_path(result.path);
    }

    void operator()(const RunOver& /*ending*/) const {
        builder_.end_of_results();
    }

    void operator()(const CleanedUp& /*ending*/) const {
        builder_.end_of_results();
        run_.evidence.ended = run_.end == RunEnd::finished;
    }

    void operator()(const Done& /*ending*/) const {
        builder_.end_of_results();
        run_.evidence.ended = true;
    }

private:
    void keep_path(std::string_view path) const {
        if (!path.empty()) {
            run_.result_file = printable(path);
        }
    }

    LogBuilder& builder_;
    Run& run_;
};

} // namespace

void take_ending(LogBuilder& builder, const Ending& ending) {
    std::visit(EndingTaker(builder), ending);
}

} // namespace wivex::report
