// SPDX-License-Identifier: Apache-2.0
// Connections to a fake supplicant, below the session.
#pragma once

#include "ctrl/wpa_ctrl.hpp"
#include "process_fixture.hpp"

#include <memory>
#include <string>
#include <string_view>

namespace wivex::test_support {

struct ConnectionCloser {
    void operator()(wpa_ctrl* ctrl) const {
        wpa_ctrl_close(ctrl);
    }
};
using Connection = std::unique_ptr<wpa_ctrl, ConnectionCloser>;

/// What a request or a message left.
struct Exchange {
    int status;
    /// As it was reported.
    std::size_t length;
    /// The room for the reply and one character behind it, filled with '#' before.
    std::string buffer;

    std::string text() const {
        return buffer.substr(0, length);
    }
};

inline Exchange request(wpa_ctrl& ctrl, std::string_view command, std::size_t room = 16,
                        EventCallback callback = nullptr) {
    Exchange exchange{0, room, std::string(room + 1, '#')};
    exchange.status =
        wpa_ctrl_request(ctrl, command, exchange.buffer.data(), exchange.length, callback);
    return exchange;
}

inline Exchange receive(wpa_ctrl& ctrl, std::size_t room) {
    Exchange exchange{0, room, std::string(room + 1, '#')};
    exchange.status = wpa_ctrl_recv(ctrl, exchange.buffer.data(), exchange.length);
    return exchange;
}

/// Nobody listens at `control_path` yet.
class ControlSocket : public ControlSocketFixture {};

/// A supplicant listens there.
class ControlClient : public ControlSocket {
protected:
    Connection open() const {
        return Connection(wpa_ctrl_open(control_path().c_str()));
    }

    FakeSupplicant supplicant_{control_path()};
};

} // namespace wivex::test_support
