// SPDX-License-Identifier: Apache-2.0
#include "ctrl/supplicant_session.hpp"

#include "common/buffers.hpp"
#include "common/console.hpp"
#include "common/interrupts.hpp"
#include "common/process_state.hpp"
#include "common/waiting.hpp"
#include "ctrl/wpa_ctrl.hpp"

#include <array>
#include <utility>

namespace wivex {

namespace {

// A queue that never runs empty must not keep an interrupt out.
constexpr int messages_between_interrupts = 64;

// Probe connections that succeeded stay open by design; the oldest of these makes room for a new
// one, so that a long run does not run out of descriptors.
constexpr std::size_t kept_probe_count = 8;

class KeptProbes {
public:
    void keep(wpa_ctrl* probe) {
        wpa_ctrl_retire(std::exchange(probes_[next_], probe));
        next_ = (next_ + 1) % kept_probe_count;
    }

private:
    std::array<wpa_ctrl*, kept_probe_count> probes_{};
    std::size_t next_ = 0;
};

KeptProbes kept_probes;

wpa_ctrl* open_connection(const RunConfig& config) {
    const std::string path = config.ctrl_iface + "/" + config.interface_name;
    return wpa_ctrl_open(path.c_str());
}

// The handle is cleared first: an interrupt must not find a connection that is being closed.
void close_connection(wpa_ctrl*& connection) {
    wpa_ctrl_close(std::exchange(connection, nullptr));
}

bool is_refusal(const Reply& reply) {
    return reply.contains("FAIL") || reply.contains("UNKNOWN COMMAND");
}

bool request_accepted(wpa_ctrl& connection, std::string_view command, Reply& reply) {
    std::size_t length = reply.capacity();
    const int result = wpa_ctrl_request(connection, command, reply.data(), length);
    reply.end_at(length);
    return result >= 0 && !is_refusal(reply);
}

// Reads the next queued message that contains `event`; false when there is none.
bool read_event(const char* event, Reply& message) {
    if (event_connection == nullptr) {
        return false;
    }
    for (int count = 1;; ++count) {
        std::size_t length = message.capacity();
        if (wpa_ctrl_recv(*event_connection, message.data(), length) < 0) {
            return false;
        }
        message.end_at(length);
        if (run_options.debug != 0) {
            print_out("%s\n", message.c_str());
        }
        if (message.contains(event)) {
            return true;
        }
        if (count % messages_between_interrupts == 0) {
            let_interrupts_in();
        }
    }
}

bool checkInterfaceStatus(const std::string& path, Reply& reply) {
    wpa_ctrl* const probe = wpa_ctrl_open(path.c_str());
    if (probe == nullptr) {
        print_err("Unable to check wlan staus.\n");
        return false;
    }
    const bool accepted = request_accepted(*probe, "STATUS", reply);
    print_out("%s\n", reply.c_str());
    if (!accepted) {
        wpa_ctrl_close(probe);
        return false;
    }
    kept_probes.keep(probe);
    return true;
}

} // namespace

SupplicantSession::SupplicantSession(const RunConfig& config) {
    open(config);
}

SupplicantSession::~SupplicantSession() {
    close();
}

bool SupplicantSession::open(const RunConfig& config) {
    wpa_ctrl_cleanup();
    if (open_) {
        return true;
    }
    open_ = true;
    command_connection = open_connection(config);
    event_connection = open_connection(config);
    if (command_connection == nullptr || event_connection == nullptr) {
        print_out("[WIFI]Unable to open sockets!!\n");
        open_ = false;
        return false;
    }
    os_sleep(1, 0);
    if (wpa_ctrl_attach(*event_connection) < 0) {
        print_out("[WIFI]Unable to attach event socket!!\n");
        open_ = false;
        close();
        return false;
    }
    return true;
}

void SupplicantSession::close() {
    if (command_connection != nullptr) {
        close_connection(command_connection);
    }
    if (event_connection != nullptr) {
        if (open_) {
            wpa_ctrl_detach(*event_connection);
        }
        close_connection(event_connection);
    }
    open_ = false;
}

bool SupplicantSession::sendCommand(std::string_view command, Reply& reply) {
    if (command_connection == nullptr || !request_accepted(*command_connection, command, reply)) {
        return false;
    }
    last_command_ = command;
    return true;
}

int SupplicantSession::waitForEvent(const char* event, EventMatcher matcher, const char* argument) {
    ReplyBuffer buffer{};
    Reply message(buffer);
    if (!read_event(event, message)) {
        return 0;
    }
    return matcher == nullptr ? 1 : matcher(message.c_str(), argument);
}

int SupplicantSession::waitForEventAny(const char* event, EventMatcher matcher,
                                       std::span<const char* const> candidates) {
    ReplyBuffer buffer{};
    Reply message(buffer);
    if (!read_event(event, message) || matcher == nullptr) {
        return -1;
    }
    int index = 0;
    for (const char* candidate : candidates) {
        print_out("[WIFI]Testing for %s\n", candidate);
        if (matcher(message.c_str(), candidate) != 0) {
            return index;
        }
        ++index;
    }
    return -1;
}

void SupplicantSession::waitForMessage() {
    const int fd = event_connection == nullptr ? -1 : wpa_ctrl_get_fd(*event_connection);
    wait_readable_or_next_second(fd);
}

bool SupplicantSession::checkWlanStatus(const RunConfig& config, Reply& reply) {
    return checkInterfaceStatus(config.ctrl_iface + "/wlan0", reply);
}

bool SupplicantSession::checkP2pStatus(const RunConfig& config, Reply& reply) {
    return checkInterfaceStatus(config.ctrl_iface + "/p2p0", reply);
}

} // namespace wivex
