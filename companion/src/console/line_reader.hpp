// SPDX-License-Identifier: Apache-2.0
// Reads console lines as typed findings, whoever wrote them: the tool, its children, the
// supplicant, a logging tool that put stamps before them.
#pragma once

#include "console/finding.hpp"
#include "console/recogniser.hpp"
#include "console/scan_list.hpp"
#include "console/stamp_reader.hpp"

#include <array>
#include <span>
#include <string_view>

namespace wivex::report {

class LineReader {
public:
    /// The line without its time stamp, which is kept. Takes every line of the console.
    std::string_view without_stamp(std::string_view line) {
        return stamps_.strip(line, recogniser_);
    }

    const StampReader& stamps() const {
        return stamps_;
    }

    /// What a line without stamp tells, in its order. The span holds until the next call.
    std::span<const Finding> read(std::string_view line);

    /// To be told what names follow, and where runs and iterations begin: names are anybody's.
    ScanList& names() {
        return names_;
    }

private:
    std::span<const Finding> only(Finding finding) {
        found_.front() = finding;
        return {found_.data(), 1};
    }

    Recogniser recogniser_;
    StampReader stamps_;
    ScanList names_;
    std::array<Finding, Recogniser::most_matches> found_{};
};

} // namespace wivex::report
