// SPDX-License-Identifier: Apache-2.0
#include "supplicant_client.hpp"

#include "common/unique_fd.hpp"
#include "common/waiting.hpp"
#include "tool_console.hpp"

#include <sys/socket.h>
#include <time.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

namespace wivex::doctor {

namespace {

// The longest datagram that a supplicant sends.
constexpr std::size_t reply_size = 8192;

bool is_refusal(const std::string& text) {
    return text.find("FAIL") != std::string::npos ||
           text.find("UNKNOWN COMMAND") != std::string::npos;
}

std::int64_t now_ms() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::int64_t>(now.tv_sec) * 1000 + now.tv_nsec / 1'000'000;
}

} // namespace

void ConnectionCloser::operator()(wpa_ctrl* connection) const {
    wpa_ctrl_close(connection);
    static_cast<void>(take_tool_output());
}

SupplicantClient::SupplicantClient(const std::string& path)
    : connection_(wpa_ctrl_open(path.c_str())) {}

SupplicantClient::~SupplicantClient() {
    if (attached_) {
        wpa_ctrl_detach(*connection_);
    }
}

SupplicantAnswer SupplicantClient::ask(std::string_view command) {
    std::vector<char> reply(reply_size);
    std::size_t length = reply.size();
    if (wpa_ctrl_request(*connection_, command, reply.data(), length) < 0) {
        return {};
    }
    SupplicantAnswer answer{SupplicantAnswer::Outcome::answered, std::string(reply.data(), length)};
    if (is_refusal(answer.text)) {
        answer.outcome = SupplicantAnswer::Outcome::refused;
    }
    return answer;
}

int SupplicantClient::attach() {
    const int result = wpa_ctrl_attach(*connection_);
    attached_ = result == 0;
    return result;
}

bool SupplicantClient::await_event(std::string_view part, int seconds) {
    const std::int64_t deadline = now_ms() + std::int64_t{seconds} * 1000;
    std::vector<char> message(reply_size);
    for (std::int64_t left = deadline - now_ms(); left > 0; left = deadline - now_ms()) {
        if (wait_readable(wpa_ctrl_get_fd(*connection_), static_cast<int>(left)) <= 0) {
            return false;
        }
        std::size_t length = message.size();
        if (wpa_ctrl_recv(*connection_, message.data(), length) < 0) {
            return false;
        }
        if (std::string_view(message.data(), length).find(part) != std::string_view::npos) {
            return true;
        }
    }
    return false;
}

std::string why_no_client_socket() {
    const UniqueFd fd(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    if (!fd) {
        return std::string("no socket: ") + std::strerror(errno);
    }
    sockaddr_un local{};
    local.sun_family = AF_UNIX;
    // A name of its own, which the run's clean-up would remove like any other.
    std::snprintf(&local.sun_path[0], sizeof(local.sun_path), "/tmp/wpa_ctrl_%d-0", getpid());
    if (bind(fd.get(), reinterpret_cast<const sockaddr*>(&local), sizeof(local)) != 0) {
        return std::string("no socket can be made in /tmp: ") + std::strerror(errno);
    }
    unlink(&local.sun_path[0]);
    return {};
}

std::string why_no_connection(const std::string& path) {
    const UniqueFd fd(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    if (!fd) {
        return std::strerror(errno);
    }
    sockaddr_un server{};
    server.sun_family = AF_UNIX;
    constexpr std::string_view abstract = "@abstract:";
    if (path.starts_with(abstract)) {
        os_strlcpy(&server.sun_path[1], path.c_str() + abstract.size(),
                   sizeof(server.sun_path) - 1);
    } else if (os_strlcpy(&server.sun_path[0], path.c_str(), sizeof(server.sun_path)) >=
               sizeof(server.sun_path)) {
        return "the path has more than 107 characters";
    }
    if (connect(fd.get(), reinterpret_cast<const sockaddr*>(&server), sizeof(server)) != 0) {
        return errno == ECONNREFUSED ? "nobody listens there any more" : std::strerror(errno);
    }
    return {};
}

} // namespace wivex::doctor
