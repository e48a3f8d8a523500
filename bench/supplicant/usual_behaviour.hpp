// SPDX-License-Identifier: Apache-2.0
// How a well-behaved supplicant answers: a small model with one access point and one peer.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

enum class GroupRole { none, client, owner };

/// What the model needs to know of the tool's configuration, and what it remembers.
struct Neighbourhood {
    std::string interface = "wlan0";
    std::string ssid;
    std::string peer;
    /// The part of this device in the Wi-Fi Direct group.
    GroupRole group = GroupRole::none;
};

struct PlannedEvent {
    std::string text;
    int delay_ms = 0;
};

struct Behaviour {
    std::string reply;
    std::vector<PlannedEvent> events;
    /// The part in the group from now on; as before when there is none.
    std::optional<GroupRole> group = std::nullopt;
};

/// The model's answer to `command`, and what follows it.
Behaviour usual_behaviour(std::string_view command, const Neighbourhood& around);

} // namespace bench
