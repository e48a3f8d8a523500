// SPDX-License-Identifier: Apache-2.0
// Writes run.json files as wivex-report writes them, for what a test wants to say.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace wivex::line {

struct WrittenReport {
    std::string serial = "4711";
    std::string station = "S1";
    std::string firmware = "1.0";
    std::string mac = "02:00:00:00:47:11";
    std::optional<int> attempt = 1;
    std::string mode = "legacy-wlan";
    std::string end = "finished";
    std::string verdict = "passed";
    std::string cause;
    std::string began = "2026-11-20T10:00:00+00:00";
    double throughput = 90;
    double associate_seconds = 2;
    /// Empty: made of all of the above.
    std::string id;

    nlohmann::ordered_json json() const;
    std::string text() const {
        return json().dump(1) + "\n";
    }
};

} // namespace wivex::line
