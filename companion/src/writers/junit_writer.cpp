// SPDX-License-Identifier: Apache-2.0
#include "writers/junit_writer.hpp"

#include "common/words.hpp"
#include "model/advice.hpp"
#include "model/limit_verdict.hpp"
#include "model/test_cases.hpp"
#include "model/verdict.hpp"
#include "model/weak_passes.hpp"
#include "writers/identity_words.hpp"
#include "writers/junit_identity.hpp"
#include "writers/junit_limits.hpp"
#include "writers/junit_suite.hpp"
#include "writers/run_words.hpp"

#include <array>
#include <map>
#include <utility>

namespace wivex::report {

namespace {

constexpr const char* unknown_moment = "1970-01-01T00:00:00";

// The schema wants a date and time without zone; an unknown one is the epoch.
std::string timestamp(const Run& run) {
    std::string text = run.began.size() == 19 ? run.began : unknown_moment;
    text[10] = 'T';
    return text;
}

std::string excerpt(const Failure& failure) {
    std::string text;
    for (std::size_t i = 0; i < failure.lines.size(); ++i) {
        text += i == failure.shown_at ? "> " : "  ";
        text += failure.lines[i] + "\n";
    }
    if (failure.concluded) {
        text += "Concluded: standard error is not part of this console.\n";
    }
    return text;
}

/// What is known of some iterations together.
struct Sum {
    std::uint32_t all = 0;
    std::uint32_t failed = 0;
    std::uint32_t unfinished = 0;
};

class RunWriter {
public:
    RunWriter(const Log& log, const Run& run, std::size_t number, pugi::xml_node parent)
        : log_(log), run_(run),
          suite_(parent, "wivex " + std::string(title_of(run.mode)), number, timestamp(run)) {
        for (const Failure& failure : run.failures) {
            if (!failure.warning) {
                index_.emplace(std::pair(failure.iteration, failure.phase), &failure);
            }
        }
    }

    void write() {
        write_properties();
        for (const Iteration& iteration : run_.iterations) {
            write_iteration(iteration);
        }
        write_iterations_behind();
        write_run();
        write_limits(suite_, class_name("limit"), judge_limits(run_));
        suite_.finish(notes());
    }

private:
    std::string class_name(std::string_view group) const {
        return "wivex." + std::string(name_of(run_.mode)) + "." + std::string(group);
    }

    void write_properties() {
        write_identity(suite_, log_, run_);
        const Device& device = run_.device;
        suite_.property("mode", std::string(name_of(run_.mode)));
        suite_.property("end", std::string(name_of(run_.end)));
        suite_.property("verdict", std::string(name_of(judge(run_).verdict)));
        suite_.property("build", device.build);
        suite_.property("config_file", device.config_file);
        suite_.property("vendor_id", device.vendor_id);
        suite_.property("product_id", device.product_id);
        suite_.property("mac_kernel", device.mac_kernel);
        suite_.property("mac_chip", device.mac_chip);
        suite_.property("iterations", std::to_string(run_.started));
        for (const TestCaseCount& row : test_cases_of(run_)) {
            if (row.failures != 0) {
                suite_.property("result_file_test_case_" + std::to_string(row.number),
                                std::to_string(row.failures));
            }
        }
    }

    void write_iteration(const Iteration& iteration) {
        for (const Phase phase : all_phases()) {
            const PhaseRecord& record = iteration.phase(phase);
            if (record.verdict == Verdict::none) {
                continue;
            }
            const pugi::xml_node test = suite_.test("iteration " + std::to_string(iteration.number),
                                                    class_name(name_of(phase)), record.seconds);
            if (record.verdict == Verdict::failed) {
                suite_.fail(test, problem_of(iteration, phase));
            } else if (record.verdict == Verdict::unfinished) {
                suite_.skip(test);
            }
        }
    }

    // Asked for every failure of a run, and always the same for a cause.
    const std::string& look_first(Cause cause) {
        std::string& text = look_first_.at(index_of(cause));
        if (!text.empty()) {
            return text;
        }
        for (const std::string_view advice : advice_on(run_, cause)) {
            text += "Look first at: " + std::string(advice) + "\n";
        }
        return text;
    }

    JunitProblem problem_of(const Iteration& iteration, Phase phase) {
        const auto found = index_.find(std::pair(iteration.number, phase));
        if (found == index_.end()) {
            return {"failure", "failed; see run.json for the counts", ""};
        }
        const Failure& failure = *found->second;
        const CauseRow& row = row_of(failure.cause);
        std::string message(row.words);
        if (failure.sub_cause != SubCause::none) {
            message += ": " + std::string(words_of(failure.sub_cause));
        }
        if (failure.unrecorded) {
            message += " (interrupted before it was counted)";
        } else if (test_case_of(failure.cause, run_.mode) == 0) {
            message += " (" + std::string(uncounted_words(run_)) + ")";
        }
        return {row.id, message, excerpt(failure) + look_first(failure.cause)};
    }

    // Of the iterations behind those kept in detail there are counts: a test case for all of them
    // together, and one for each phase.
    void write_iterations_behind() {
        Sum sum{run_.started - static_cast<std::uint32_t>(run_.iterations.size()), run_.failed(),
                run_.count(Outcome::unfinished)};
        if (sum.all == 0) {
            return;
        }
        for (const Iteration& iteration : run_.iterations) {
            sum.failed -= iteration.failed() ? 1 : 0;
            sum.unfinished -= iteration.outcome == Outcome::unfinished ? 1 : 0;
        }
        write_sum("iterations", sum);
        for (const Phase phase : all_phases()) {
            write_sum(name_of(phase), sum_behind(phase));
        }
    }

    Sum sum_behind(Phase phase) const {
        std::array<std::uint32_t, verdict_count> counts = run_.verdicts.at(index_of(phase));
        for (const Iteration& iteration : run_.iterations) {
            const Verdict verdict = iteration.phase(phase).verdict;
            counts.at(static_cast<std::size_t>(verdict)) -= verdict == Verdict::none ? 0 : 1;
        }
        Sum sum{0, counts.at(static_cast<std::size_t>(Verdict::failed)),
                counts.at(static_cast<std::size_t>(Verdict::unfinished))};
        for (std::size_t i = 1; i < counts.size(); ++i) {
            sum.all += counts.at(i);
        }
        return sum;
    }

    void write_sum(std::string_view group, const Sum& sum) {
        if (sum.all == 0) {
            return;
        }
        const pugi::xml_node test =
            suite_.test("iterations " + std::to_string(run_.iterations.size()) + " to " +
                            std::to_string(run_.started - 1),
                        class_name(group), unknown_time);
        if (sum.failed != 0) {
            suite_.fail(test,
                        {"failure",
                         std::to_string(sum.failed) + " of " + std::to_string(sum.all) + " failed",
                         ""});
        } else if (sum.unfinished != 0) {
            suite_.skip(test);
        }
    }

    void write_run() {
        const Judgement judgement = judge(run_);
        const pugi::xml_node test = suite_.test("run", class_name("run"), run_.seconds);
        if (judgement.is_green()) {
            return;
        }
        std::string text;
        for (const std::string& missing : judgement.missing) {
            text += missing + "\n";
        }
        suite_.error(test, {name_of(judgement.verdict), verdict_sentence(run_), text});
    }

    std::string notes() const {
        std::string text;
        for (const std::string& weak : weak_passes(run_)) {
            text += weak + "\n";
        }
        if (run_.times == TimeSource::none) {
            text += "The console had no times: every time is 0.\n";
        }
        if (const std::string words = zone_words(run_); !words.empty()) {
            text += words + "\n";
        }
        if (run_.began.size() != 19) {
            text += "When the run began is not known: the time stamp is a placeholder.\n";
        }
        if (run_.iterations.size() < run_.started) {
            text += "Only the first " + std::to_string(run_.iterations.size()) + " of " +
                    std::to_string(run_.started) +
                    " iterations are listed one by one; the others are summed up.\n";
        }
        return text;
    }

    const Log& log_;
    const Run& run_;
    JunitSuite suite_;
    std::multimap<std::pair<std::uint32_t, Phase>, const Failure*> index_;
    std::array<std::string, cause_count> look_first_;
};

// Runs that were left out to bound the memory keep their verdicts.
void write_left_out(const Log& log, std::size_t number, pugi::xml_node parent) {
    JunitSuite suite(parent, "wivex runs left out", number, unknown_moment);
    for (std::size_t i = 0; i < run_verdict_count; ++i) {
        const std::uint32_t count = log.dropped_verdicts.at(i);
        if (count == 0) {
            continue;
        }
        const auto verdict = static_cast<RunVerdict>(i);
        const std::string name = "earlier runs, " + std::string(name_of(verdict));
        const pugi::xml_node test = suite.test(name, "wivex.left-out.run", unknown_time);
        if (verdict != RunVerdict::passed) {
            suite.error(test, {name_of(verdict), count_text(count, "run", "runs"), ""});
        }
    }
    write_limits(suite, "wivex.left-out.limit", log.dropped_limits);
    suite.finish("Only the last " + std::to_string(most_runs) + " runs are listed.\n");
}

void write_no_run(const Log& log, pugi::xml_node parent) {
    JunitSuite suite(parent, "wivex", 0, unknown_moment);
    const pugi::xml_node test = suite.test("run", "wivex.unknown.run", unknown_time);
    suite.error(test, {name_of(judge(log)), verdict_sentence(log), ""});
    write_limits(suite, "wivex.unknown.limit", judge_limits(log));
    suite.finish("");
}

struct StringWriter : pugi::xml_writer {
    std::string text;
    void write(const void* data, std::size_t size) override {
        text.append(static_cast<const char*>(data), size);
    }
};

} // namespace

std::string write_junit(const Log& log) {
    pugi::xml_document document;
    pugi::xml_node declaration = document.append_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
    declaration.append_attribute("encoding") = "UTF-8";
    const pugi::xml_node suites = document.append_child("testsuites");
    std::size_t number = 0;
    for (const Run& run : log.runs) {
        RunWriter(log, run, number, suites).write();
        ++number;
    }
    if (log.dropped_runs != 0) {
        write_left_out(log, number, suites);
    }
    if (log.runs.empty()) {
        write_no_run(log, suites);
    }
    StringWriter writer;
    document.save(writer, " ", pugi::format_default, pugi::encoding_utf8);
    return std::move(writer.text);
}

} // namespace wivex::report
