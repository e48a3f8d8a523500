// SPDX-License-Identifier: Apache-2.0
// The access points that the scans of this process have found.
#pragma once

#include "common/fixed_text.hpp"
#include "diag/information_elements.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace wivex {

struct AccessPoint {
    /// 0 seen in the latest scan, 1 not; unused in the table of a scan.
    std::int32_t status = 0;
    FixedText<8> signal;
    FixedText<18> bssid;
    /// As printed: with its escapes.
    SsidText ssid;
};

/// A list of fixed size, so that the scan's callback never allocates.
template <std::size_t Capacity>
class AccessPointList {
public:
    bool full() const {
        return count_ == Capacity;
    }
    bool empty() const {
        return count_ == 0;
    }
    std::size_t size() const {
        return count_;
    }
    /// Appends; an access point that does not fit is left out.
    void append(const AccessPoint& access_point) {
        if (!full()) {
            access_points_[count_++] = access_point;
        }
    }
    std::span<AccessPoint> all() {
        return std::span(access_points_).first(count_);
    }
    std::span<const AccessPoint> all() const {
        return std::span(access_points_).first(count_);
    }

private:
    std::array<AccessPoint, Capacity> access_points_{};
    std::size_t count_ = 0;
};

inline constexpr std::size_t scan_table_capacity = 300;

using ScanTable = AccessPointList<scan_table_capacity>;

/// The table of this process. Every scan appends to it and nothing empties it: kept. Once it is
/// full, every further scan ends in the "shield room" verdict.
ScanTable& scan_table();

} // namespace wivex
