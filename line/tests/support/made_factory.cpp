// SPDX-License-Identifier: Apache-2.0
#include "made_factory.hpp"

#include <array>
#include <ctime>
#include <random>

namespace wivex::line {

namespace {

constexpr Moment begin_of_work = 8 * seconds_of_hour;
constexpr Moment hours_of_work = 12 * seconds_of_hour;
constexpr int days_of_new_firmware = 10;
constexpr int day_without_access_point = 5;

struct BaseRate {
    const char* cause;
    double rate;
};

constexpr auto base_rates = std::to_array<BaseRate>({{"dhcp-client", 0.010},
                                                     {"not-connected", 0.008},
                                                     {"scan-rejected", 0.005},
                                                     {"iperf-client", 0.003},
                                                     {"killed", 0.002}});

std::string utc_stamp(Moment moment) {
    const auto seconds = static_cast<std::time_t>(moment);
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    std::array<char, 32> text{};
    const std::size_t length =
        std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
    return {text.data(), length};
}

class Maker {
public:
    explicit Maker(const FactoryPlan& plan) : plan_(plan), random_(plan.seed) {}

    double chance() {
        return std::uniform_real_distribution<>(0, 1)(random_);
    }

    double around(double mean, double deviation) {
        return std::normal_distribution<>(mean, deviation)(random_);
    }

    // Why an attempt fails; empty when it passes.
    std::string cause_of(const WrittenReport& report, int back, Moment time_of_day) {
        if (plan_.defects && report.station == "S3" && chance() < 0.08) {
            return "dhcp-client";
        }
        if (plan_.defects && back == day_without_access_point &&
            time_of_day >= 12 * seconds_of_hour && chance() < 0.7) {
            return "not-connected";
        }
        for (const BaseRate& base : base_rates) {
            if (chance() < base.rate) {
                return base.cause;
            }
        }
        return "";
    }

    void judge(WrittenReport& report, const std::string& cause) {
        const bool killed = cause == "killed";
        report.verdict = cause.empty() ? "passed" : killed ? "unknown" : "failed";
        report.end = killed ? "killed" : "finished";
        report.cause = killed ? "" : cause;
        const bool slow = report.firmware == "2.1";
        report.throughput = around(slow ? 80 : 90, 3);
        report.associate_seconds = around(slow ? 2.6 : 2.0, 0.2);
    }

    std::string firmware(int back) {
        return plan_.defects && back < days_of_new_firmware && chance() < 0.5 ? "2.1" : "2.0";
    }

private:
    const FactoryPlan& plan_;
    std::mt19937_64 random_;
};

// The day of a moment in UTC, in which the factory works.
Moment day_of(Moment moment) {
    return moment / seconds_of_day * seconds_of_day;
}

WrittenReport unit_of(std::int64_t number, const FactoryPlan& plan, Maker& maker, int back) {
    WrittenReport report;
    report.serial = std::to_string(100000 + number);
    std::array<char, 18> mac{};
    std::snprintf(mac.data(), mac.size(), "02:00:%02x:%02x:%02x:%02x",
                  static_cast<unsigned>(number >> 24 & 255),
                  static_cast<unsigned>(number >> 16 & 255),
                  static_cast<unsigned>(number >> 8 & 255), static_cast<unsigned>(number & 255));
    report.mac = mac.data();
    report.station = "S" + std::to_string(1 + number % plan.stations);
    report.firmware = maker.firmware(back);
    return report;
}

} // namespace

FactoryTruth make_factory(const FactoryPlan& plan,
                          const std::function<void(const WrittenReport&, Moment)>& each) {
    Maker maker(plan);
    FactoryTruth truth;
    for (int back = plan.days - 1; back >= 0; --back) {
        const Moment day = day_of(plan.end - 1) - back * seconds_of_day;
        for (int i = 0; i < plan.units_a_day; ++i) {
            const Moment time_of_day = begin_of_work + hours_of_work * i / plan.units_a_day;
            if (day + time_of_day > plan.end) {
                break;
            }
            WrittenReport report = unit_of(truth.units++, plan, maker, back);
            auto& [units, passes] = truth.days[day];
            ++units;
            for (int attempt = 1; attempt <= 3; ++attempt) {
                const Moment began = day + time_of_day + Moment{attempt - 1} * 60;
                const std::string cause = maker.cause_of(report, back, time_of_day);
                report.attempt = attempt;
                report.began = utc_stamp(began);
                maker.judge(report, cause);
                each(report, began);
                ++truth.runs;
                if (attempt == 1 && cause.empty()) {
                    ++truth.first_passes;
                    ++passes;
                } else if (attempt == 1) {
                    ++truth.causes[cause];
                    ++truth.station_causes[{report.station, cause}];
                }
                if (cause.empty()) {
                    ++truth.last_passes;
                    break;
                }
            }
        }
    }
    return truth;
}

} // namespace wivex::line
