// SPDX-License-Identifier: Apache-2.0
#include "reader/run_file.hpp"

#include "common/printable.hpp"
#include "model/run.hpp"
#include "reader/json_walker.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace wivex::report {

namespace {

constexpr double newest_version = 2;
constexpr double largest_count = 1e9;
constexpr double largest_value = 1e9;
constexpr std::size_t most_causes = 256;
constexpr std::size_t longest_text = 300;

constexpr std::string_view run_path = "/runs/*";
constexpr std::string_view cause_path = "/runs/*/causes/*";
constexpr std::string_view iteration_path = "/runs/*/iterations/*";
constexpr std::string_view phase_path = "/runs/*/iterations/*/phases/";

// What a run tells until its end.
struct OpenRun {
    std::string mode;
    double started = -1;
    double outcomes = 0;
    double failed = 0;
    std::size_t iterations = 0;
};

struct OpenCause {
    std::string id;
    std::string words;
    double count = 0;
};

struct OpenRecord {
    std::string outcome;
    double throughput = -1;
    double signal = std::nan("");
    double seconds = std::nan("");
};

struct OpenPhase {
    std::string verdict;
    double seconds = std::nan("");
};

class RunFileReader : public JsonWalker {
public:
    explicit RunFileReader(Reported& reported) : reported_(reported) {}

    /// What is missing at the end.
    std::string finish() {
        if (format_ != "wivex-report") {
            return "it is no run.json of wivex-report";
        }
        if (version_ < 1 || version_ > newest_version) {
            return "its version is not known";
        }
        return reported_.runs == 0 ? "it holds no run" : "";
    }

protected:
    bool take_number(std::string_view path, double value) override {
        if (path == "/version") {
            version_ = value;
        } else if (path == "/runs_left_out") {
            return take_count(value, reported_.runs_left_out);
        } else if (path.starts_with(iteration_path)) {
            return take_in_iteration(path.substr(iteration_path.size()), value);
        } else if (path.starts_with(cause_path)) {
            return take_in_cause(path.substr(cause_path.size()), value);
        } else if (path.starts_with(run_path)) {
            return take_in_run(path.substr(run_path.size()), value);
        }
        return true;
    }

    bool take_text(std::string_view path, std::string_view raw) override {
        const std::string text = printable(raw, longest_text);
        if (path == "/format") {
            format_ = text;
        } else if (path == "/verdict") {
            reported_.verdict = text;
        } else if (path == "/verdict_words") {
            reported_.verdict_words = text;
        } else if (path == "/identity/serial") {
            reported_.serial = text;
        } else if (path == "/identity/station") {
            reported_.station = text;
        } else if (path == "/runs/*/mode") {
            run_.mode = text;
        } else if (path == "/runs/*/causes/*/cause") {
            cause_.id = text;
        } else if (path == "/runs/*/causes/*/words") {
            cause_.words = text;
        } else if (path == "/runs/*/iterations/*/outcome") {
            record_.outcome = text;
        } else if (path.starts_with(phase_path) && path.ends_with("/verdict")) {
            phase_.verdict = text;
        }
        return true;
    }

    bool end_of(std::string_view path) override {
        if (path == run_path) {
            return end_run();
        }
        if (path == cause_path) {
            return end_cause();
        }
        if (path == iteration_path) {
            return end_iteration();
        }
        if (path.starts_with(phase_path)) {
            return end_phase(path.substr(phase_path.size()));
        }
        return true;
    }

private:
    bool take_in_run(std::string_view name, double value) {
        const bool is_outcome = name.starts_with("/outcomes/");
        if (name != "/iterations_started" && !is_outcome) {
            return true;
        }
        std::uint32_t count = 0;
        if (!take_count(value, count)) {
            return false;
        }
        if (is_outcome) {
            run_.outcomes += value;
            run_.failed += name.starts_with("/outcomes/failed") ? value : 0;
        } else {
            run_.started = value;
        }
        return true;
    }

    bool take_in_cause(std::string_view name, double value) {
        if (name != "/failures" && name != "/warnings" && name != "/interrupted") {
            return true;
        }
        std::uint32_t count = 0;
        const bool good = take_count(value, count);
        cause_.count += count;
        return good;
    }

    bool take_in_iteration(std::string_view name, double value) {
        if (std::fabs(value) > largest_value) {
            return refuse("a figure that is none");
        }
        if (name == "/throughput") {
            record_.throughput = value;
        } else if (name == "/signal") {
            record_.signal = value;
        } else if (name == "/seconds") {
            record_.seconds = value;
        } else if (name.starts_with("/phases/") && name.ends_with("/seconds")) {
            phase_.seconds = value;
        }
        return true;
    }

    bool take_count(double value, std::uint32_t& count) {
        if (value < 0 || value > largest_count || value != std::floor(value)) {
            return refuse("a count that is none");
        }
        count = static_cast<std::uint32_t>(value);
        return true;
    }

    bool end_phase(std::string_view name) {
        const OpenPhase phase = std::exchange(phase_, {});
        const auto phases = all_phases();
        const auto* const found =
            std::ranges::find_if(phases, [&](Phase one) { return name == name_of(one); });
        if (found != phases.end() && phase.seconds >= 0 &&
            (phase.verdict == "passed" || phase.verdict == "warned")) {
            reported_.phases.at(index_of(*found)).push_back(static_cast<float>(phase.seconds));
        }
        return true;
    }

    bool end_iteration() {
        const OpenRecord record = std::exchange(record_, {});
        if (++run_.iterations > most_detailed_iterations) {
            return refuse("more iterations than a report lists");
        }
        ++reported_.iterations_kept;
        if (record.throughput >= 0) {
            reported_.throughput.push_back(static_cast<float>(record.throughput));
        }
        if (!std::isnan(record.signal)) {
            reported_.signal.push_back(static_cast<float>(record.signal));
        }
        if (record.seconds >= 0 && record.outcome != "unfinished") {
            reported_.seconds.push_back(static_cast<float>(record.seconds));
        }
        return true;
    }

    bool end_cause() {
        OpenCause cause = std::exchange(cause_, {});
        if (cause.id.empty() || cause.count > largest_count) {
            return refuse("a cause that is none");
        }
        if (reported_.causes.size() == most_causes && !reported_.causes.contains(cause.id)) {
            return refuse("more causes than there are");
        }
        ReportedCause& known = reported_.causes[cause.id];
        known.words = cause.words;
        known.count += static_cast<std::uint32_t>(cause.count);
        return known.count <= largest_count || refuse("a count that is none");
    }

    bool end_run() {
        const OpenRun run = std::exchange(run_, {});
        const double sum = reported_.iterations + run.started;
        if (run.mode.empty() || run.started < 0 || run.outcomes != run.started ||
            static_cast<double>(run.iterations) > run.started || sum > largest_count) {
            return refuse("a run whose counts do not fit together");
        }
        if (reported_.runs == most_runs) {
            return refuse("more runs than a report lists");
        }
        if (!reported_.mode.empty() && reported_.mode != run.mode) {
            return refuse("runs of several modes, " + reported_.mode + " and " + run.mode);
        }
        ++reported_.runs;
        reported_.mode = run.mode;
        reported_.iterations = static_cast<std::uint32_t>(sum);
        reported_.failed += static_cast<std::uint32_t>(run.failed);
        return true;
    }

    Reported& reported_;
    std::string format_;
    double version_ = 0;
    OpenRun run_;
    OpenCause cause_;
    OpenRecord record_;
    OpenPhase phase_;
};

} // namespace

std::string read_run_file(std::string_view content, Reported& reported) {
    RunFileReader reader(reported);
    const std::string problem = reader.walk(content);
    return problem.empty() ? reader.finish() : problem;
}

} // namespace wivex::report
