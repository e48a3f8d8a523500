// SPDX-License-Identifier: Apache-2.0
#include "reader/bounded_json.hpp"

#include <algorithm>
#include <array>
#include <limits>

namespace wivex::line {

namespace {

// Nothing of these is kept, whatever they hold.
constexpr auto left_out = std::to_array<std::string_view>({
    "access_points",
    "iterations",
    "test_cases",
    "timeline",
});
// They stand in the document or in one of its runs.
constexpr int deepest_left_out = 3;

// Documents of the reporter stay far below.
constexpr std::size_t most_values = 200'000;

// Decides what of a document is kept while it is parsed.
class Keeper {
public:
    explicit Keeper(std::string& problem) : problem_(problem) {}

    bool operator()(int depth, Json::parse_event_t event, Json& parsed) {
        if (depth > most_depth) {
            complain("nested deeper than " + std::to_string(most_depth));
        }
        if (event == Json::parse_event_t::key && depth <= deepest_left_out) {
            const auto& name = parsed.get_ref<const std::string&>();
            const bool skips = std::ranges::find(left_out, name) != left_out.end();
            skipped_below_ = skips ? depth : std::numeric_limits<int>::max();
            return !skips && problem_.empty();
        }
        if (depth > skipped_below_) {
            return false;
        }
        if (++values_ > most_values) {
            complain("more than " + std::to_string(most_values) + " values");
        }
        // Nothing more is stored once there is a problem.
        return problem_.empty();
    }

private:
    void complain(const std::string& what) {
        if (problem_.empty()) {
            problem_ = what;
        }
    }

    std::string& problem_;
    int skipped_below_ = std::numeric_limits<int>::max();
    std::size_t values_ = 0;
};

} // namespace

Json read_json(std::string_view text, std::string& problem) {
    if (text.size() > most_bytes) {
        problem = "larger than " + std::to_string(most_bytes >> 20U) + " MB";
        return {Json::value_t::discarded};
    }
    Json document = Json::parse(text, Keeper(problem), false);
    if (problem.empty() && document.is_discarded()) {
        problem = "not JSON, or cut off";
    }
    return problem.empty() ? document : Json(Json::value_t::discarded);
}

} // namespace wivex::line
