// SPDX-License-Identifier: Apache-2.0
// The access points that an iteration has heard, and which of them is under test: the one that the
// supplicant tells to be connected to. Without that event the only one of the network's name.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace wivex::report {

class HeardAccessPoints {
public:
    static constexpr std::size_t most = 64;

    /// A line of a scan listing; a later one of the same access point counts.
    void hear(std::string_view bssid, std::string_view ssid, float signal);
    void look_for(std::string_view ssid) {
        ssid_ = ssid;
    }
    void connect(std::string_view bssid) {
        connected_ = bssid;
    }

    /// Signal of the access point under test; NaN: not told, or not which one it is.
    float signal() const;

private:
    struct Heard {
        std::string bssid;
        std::string ssid;
        float signal;
    };
    std::vector<Heard> heard_;
    std::string ssid_;
    std::string connected_;
};

} // namespace wivex::report
