#include "junit_writer.hpp"

#include <cmath>
#include <cstdio>
#include <map>
#include <pugixml.hpp>
#include <utility>

namespace wivex::report {

namespace {

constexpr const char* host_unknown = "unknown";

std::string text_of(std::string_view text) {
    return std::string(text);
}

std::string seconds_text(double seconds) {
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "%.3f", std::isnan(seconds) ? 0.0 : seconds);
    return text.data();
}

// The schema wants a date and time without zone; an unknown one is the epoch.
std::string timestamp(const Run& run) {
    std::string text = run.began.size() == 19 ? run.began : "1970-01-01T00:00:00";
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

using FailureIndex = std::multimap<std::pair<std::uint32_t, Phase>, const Failure*>;

struct Totals {
    unsigned tests = 0;
    unsigned failures = 0;
    unsigned skipped = 0;
    double seconds = 0;
};

class SuiteWriter {
public:
    SuiteWriter(const Run& run, std::size_t number) : run_(run), number_(number) {
        for (const Failure& failure : run.failures) {
            if (!failure.warning) {
                index_.emplace(std::pair(failure.iteration, failure.phase), &failure);
            }
        }
    }

    Totals write(pugi::xml_node parent) {
        pugi::xml_node suite = parent.append_child("testsuite");
        const std::string name = "wivex " + text_of(title_of(run_.mode));
        suite.append_attribute("name") = name.c_str();
        suite.append_attribute("package") = "wivex";
        suite.append_attribute("id") = static_cast<unsigned>(number_);
        suite.append_attribute("timestamp") = timestamp(run_).c_str();
        suite.append_attribute("hostname") = host_unknown;
        pugi::xml_attribute tests = suite.append_attribute("tests");
        pugi::xml_attribute failures = suite.append_attribute("failures");
        suite.append_attribute("errors") = 0;
        pugi::xml_attribute skipped = suite.append_attribute("skipped");
        pugi::xml_attribute time = suite.append_attribute("time");
        write_properties(suite);
        for (const Iteration& iteration : run_.iterations) {
            write_iteration(suite, iteration);
        }
        suite.append_child("system-out").text() = notes().c_str();
        suite.append_child("system-err").text() = "";
        tests = totals_.tests;
        failures = totals_.failures;
        skipped = totals_.skipped;
        time = seconds_text(totals_.seconds).c_str();
        return totals_;
    }

private:
    static void add_property(pugi::xml_node list, const char* name, const std::string& value) {
        if (value.empty()) {
            return;
        }
        pugi::xml_node property = list.append_child("property");
        property.append_attribute("name") = name;
        property.append_attribute("value") = value.c_str();
    }

    void write_properties(pugi::xml_node suite) const {
        pugi::xml_node list = suite.append_child("properties");
        const Device& device = run_.device;
        add_property(list, "mode", text_of(name_of(run_.mode)));
        add_property(list, "end", text_of(name_of(run_.end)));
        add_property(list, "build", device.build);
        add_property(list, "config_file", device.config_file);
        add_property(list, "vendor_id", device.vendor_id);
        add_property(list, "product_id", device.product_id);
        add_property(list, "mac_kernel", device.mac_kernel);
        add_property(list, "mac_chip", device.mac_chip);
        add_property(list, "iterations", std::to_string(run_.started));
        for (int number = 1; number <= 9; ++number) {
            const std::uint32_t failures = run_.failures_of_test_case(number);
            if (failures != 0) {
                const std::string name = "result_file_test_case_" + std::to_string(number);
                add_property(list, name.c_str(), std::to_string(failures));
            }
        }
    }

    void write_iteration(pugi::xml_node suite, const Iteration& iteration) {
        for (const Phase phase : all_phases()) {
            const PhaseRecord& record = iteration.phase(phase);
            if (record.verdict == Verdict::none) {
                continue;
            }
            ++totals_.tests;
            pugi::xml_node test = suite.append_child("testcase");
            const std::string name = "iteration " + std::to_string(iteration.number);
            const std::string group =
                "wivex." + text_of(name_of(run_.mode)) + "." + text_of(name_of(phase));
            test.append_attribute("name") = name.c_str();
            test.append_attribute("classname") = group.c_str();
            test.append_attribute("time") = seconds_text(record.seconds).c_str();
            totals_.seconds += std::isnan(record.seconds) ? 0.0 : record.seconds;
            if (record.verdict == Verdict::failed) {
                ++totals_.failures;
                write_failure(test, iteration, phase);
            } else if (record.verdict == Verdict::unfinished) {
                ++totals_.skipped;
                test.append_child("skipped");
            }
        }
    }

    void write_failure(pugi::xml_node test, const Iteration& iteration, Phase phase) const {
        pugi::xml_node node = test.append_child("failure");
        const auto found = index_.find(std::pair(iteration.number, phase));
        if (found == index_.end()) {
            node.append_attribute("message") = "failed; see run.json for the counts";
            node.append_attribute("type") = "failure";
            return;
        }
        const Failure& failure = *found->second;
        const CauseRow& row = row_of(failure.cause);
        std::string message = text_of(row.words);
        if (test_case_of(failure.cause, run_.mode) == 0) {
            message += " (not counted in the result file)";
        } else if (failure.unrecorded) {
            message += " (interrupted before it was counted)";
        }
        node.append_attribute("message") = message.c_str();
        node.append_attribute("type") = text_of(row.id).c_str();
        node.text() = excerpt(failure).c_str();
    }

    std::string notes() const {
        std::string text;
        if (run_.times == TimeSource::none) {
            text += "The console had no times: every time is 0.\n";
        }
        if (run_.began.size() != 19) {
            text += "When the run began is not known: the time stamp is a placeholder.\n";
        }
        if (run_.iterations.size() < run_.started) {
            text += "Only the first " + std::to_string(run_.iterations.size()) + " of " +
                    std::to_string(run_.started) + " iterations are listed.\n";
        }
        return text;
    }

    const Run& run_;
    std::size_t number_;
    FailureIndex index_;
    Totals totals_;
};

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
    pugi::xml_node suites = document.append_child("testsuites");
    std::size_t number = 0;
    for (const Run& run : log.runs) {
        SuiteWriter(run, number).write(suites);
        ++number;
    }
    StringWriter writer;
    document.save(writer, " ", pugi::format_default, pugi::encoding_utf8);
    return std::move(writer.text);
}

} // namespace wivex::report
