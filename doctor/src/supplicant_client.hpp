// SPDX-License-Identifier: Apache-2.0
// A conversation with the supplicant that leaves nothing behind: no client socket of others is
// removed, and nothing is asked that changes its state.
#pragma once

#include "ctrl/wpa_ctrl.hpp"

#include <memory>
#include <string>
#include <string_view>

namespace wivex::doctor {

struct ConnectionCloser {
    void operator()(wpa_ctrl* connection) const;
};

struct SupplicantAnswer {
    enum class Outcome { answered, refused, silent };
    Outcome outcome = Outcome::silent;
    std::string text;
};

class SupplicantClient {
public:
    /// Connects to the socket at `path` with the tool's own client.
    explicit SupplicantClient(const std::string& path);

    explicit operator bool() const {
        return connection_ != nullptr;
    }

    /// Asks and waits as long as the run does. Refused is what the run takes for a refusal.
    SupplicantAnswer ask(std::string_view command);

    /// Begins to listen to events as the run does. Returns what the run's own call returns: 0, -1
    /// or -2. Everything ends with this object.
    int attach();

    /// Waits for an event that holds `part`, `seconds` at most.
    bool await_event(std::string_view part, int seconds);

private:
    std::unique_ptr<wpa_ctrl, ConnectionCloser> connection_;
    bool attached_ = false;

public:
    SupplicantClient(const SupplicantClient&) = delete;
    SupplicantClient& operator=(const SupplicantClient&) = delete;
    ~SupplicantClient();
};

/// Why no client can make its socket in /tmp, or empty when one can.
std::string why_no_client_socket();

/// Why the socket at `path` takes no connection; empty when it does.
std::string why_no_connection(const std::string& path);

} // namespace wivex::doctor
