// SPDX-License-Identifier: Apache-2.0
// What the doctor finds: points, and remarks on each.
#pragma once

#include <string>
#include <vector>

namespace wivex::doctor {

enum class State {
    good,
    /// The run does not need it, or nobody asked for it.
    not_checked,
    /// The run needs it, and it cannot be judged: never as good as good.
    not_known,
    bad
};

struct Remark {
    /// Good for what is only worth knowing.
    State state = State::good;
    /// What stands there.
    std::string found;
    /// What the run prints because of it, to the letter; empty when it says nothing of it.
    std::string prints;
    /// The command or the edit that mends it; empty when there is none.
    std::string mend;
};

struct Point {
    explicit Point(const char* point_name) : name(point_name) {}

    /// The worst of the remarks.
    State state() const;

    void note(std::string what, std::string mend = "");
    void bad(std::string what, std::string prints, std::string mend);
    void unknown(std::string what, std::string prints, std::string mend);
    /// The run does not need it, or nobody asked for it.
    void skip(std::string reason);

    /// What the run prints because of the first bad or unknown remark; empty when there is none.
    std::string first_prints() const;

    const char* name;
    /// What was found, in a few words.
    std::string found;
    std::vector<Remark> remarks;
    bool skipped = false;
};

/// Ready is a device of whose points none is bad and none unknown.
bool is_ready(const std::vector<Point>& points);

} // namespace wivex::doctor
