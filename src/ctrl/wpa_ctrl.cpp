// SPDX-License-Identifier: Apache-2.0
#include "ctrl/wpa_ctrl.hpp"

#include "common/console.hpp"
#include "common/files.hpp"
#include "common/process_state.hpp"
#include "common/waiting.hpp"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

namespace wivex {

namespace {

constexpr const char* client_directory = "/tmp";
constexpr std::string_view client_prefix = "wpa_ctrl_";
constexpr std::string_view abstract_prefix = "@abstract:";
constexpr std::size_t path_size = sizeof(sockaddr_un::sun_path);
constexpr int reply_timeout_ms = 10'000;
constexpr std::int64_t busy_send_seconds = 5;

// The line that every close prints names itself and this number: kept.
constexpr int close_trace_number = 217;

// A record that cannot be allocated is a null connection, not an exception: hence calloc and free.
// NOLINTBEGIN(cppcoreguidelines-no-malloc)
struct RecordReleaser {
    void operator()(wpa_ctrl* ctrl) const {
        std::free(ctrl);
    }
};
using Record = std::unique_ptr<wpa_ctrl, RecordReleaser>;

Record allocate_record() {
    return Record(static_cast<wpa_ctrl*>(std::calloc(1, sizeof(wpa_ctrl))));
}
// NOLINTEND(cppcoreguidelines-no-malloc)

void remove_file(const char* path) {
    call_on_file([path] { return unlink(path); });
}

bool fill_local_name(sockaddr_un& local) {
    const int length = std::snprintf(local.sun_path, path_size, "%s/%s%d-%d", client_directory,
                                     client_prefix.data(), getpid(), client_counter);
    return length >= 0 && static_cast<std::size_t>(length) < path_size;
}

// Both addresses are passed with the full length of the structure: it is the name that the
// supplicant answers to.
bool bind_once(int fd, sockaddr_un& local) {
    return fill_local_name(local) &&
           call_on_file([fd, &local] {
               return bind(fd, reinterpret_cast<const sockaddr*>(&local), sizeof(local));
           }) == 0;
}

bool bind_over_leftover(int fd, sockaddr_un& local) {
    remove_file(local.sun_path);
    return bind_once(fd, local);
}

// A name that is taken was left by an earlier run with this process id.
bool bind_local_name(int fd, sockaddr_un& local) {
    return bind_once(fd, local) || (errno == EADDRINUSE && bind_over_leftover(fd, local));
}

bool fill_destination(sockaddr_un& dest, const char* path) {
    dest.sun_family = AF_UNIX;
    if (std::string_view(path).starts_with(abstract_prefix)) {
        os_strlcpy(dest.sun_path + 1, path + abstract_prefix.size(), path_size - 1);
        return true;
    }
    return os_strlcpy(dest.sun_path, path, path_size) < path_size;
}

void make_non_blocking(int fd) {
    const int flags = fcntl(fd, F_GETFL);
    if (flags >= 0 && fcntl(fd, F_SETFL, flags | O_NONBLOCK) < 0) {
        print_error("[WIFI]fcntl(ctrl->s, O_NONBLOCK)", errno);
    }
}

bool is_busy(int error) {
    return error == EAGAIN || error == EBUSY || error == EWOULDBLOCK;
}

bool send_command(const wpa_ctrl& ctrl, std::string_view command) {
    std::int64_t start = 0;
    std::int64_t microseconds = 0;
    while (send(ctrl.socket, command.data(), command.size(), 0) < 0) {
        if (!is_busy(errno)) {
            return false;
        }
        std::int64_t now = 0;
        os_get_time(now, microseconds);
        if (start == 0) {
            start = now;
        } else if (now > start + busy_send_seconds) {
            return false;
        }
        os_sleep(1, 0);
    }
    return true;
}

void deliver_event(EventCallback callback, char* message, std::size_t length,
                   std::size_t capacity) {
    const std::size_t kept = length == capacity ? length - 1 : length;
    message[kept] = '\0';
    callback(message, kept);
}

int request_ok(wpa_ctrl& ctrl, std::string_view command) {
    std::array<char, 10> reply{};
    std::size_t length = reply.size();
    const int result = wpa_ctrl_request(ctrl, command, reply.data(), length);
    if (result < 0) {
        return result;
    }
    return std::string_view(reply.data(), length) == "OK\n" ? 0 : -1;
}

} // namespace

wpa_ctrl* wpa_ctrl_open(const char* path) {
    if (path == nullptr) {
        return nullptr;
    }
    Record ctrl = allocate_record();
    if (!ctrl) {
        return nullptr;
    }
    UniqueFd fd(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    if (!fd) {
        return nullptr;
    }
    ctrl->local.sun_family = AF_UNIX;
    ++client_counter;
    if (!bind_local_name(fd.get(), ctrl->local)) {
        return nullptr;
    }
    if (!fill_destination(ctrl->dest, path)) {
        // The bound file stays: the next clean-up of /tmp removes it.
        return nullptr;
    }
    if (call_on_file([&fd, &ctrl] {
            return connect(fd.get(), reinterpret_cast<const sockaddr*>(&ctrl->dest),
                           sizeof(ctrl->dest));
        }) < 0) {
        fd.reset();
        remove_file(ctrl->local.sun_path);
        return nullptr;
    }
    make_non_blocking(fd.get());
    ctrl->socket = fd.release();
    return ctrl.release();
}

void wpa_ctrl_close(wpa_ctrl* ctrl) {
    if (ctrl == nullptr) {
        return;
    }
    Record record(ctrl);
    remove_file(ctrl->local.sun_path);
    UniqueFd(std::exchange(ctrl->socket, -1)).reset();
    print_out("[WIFI]Here at %d %s...\n", close_trace_number, "wpa_ctrl_close");
    print_out("Value of sigterm_var is %d ...\n", sigterm_var);
    if (sigterm_var != 0) {
        // Code that the handler interrupted may still hold the record.
        static_cast<void>(record.release());
    }
}

void wpa_ctrl_retire(wpa_ctrl* ctrl) {
    const Record record(ctrl);
    if (record) {
        UniqueFd(record->socket).reset();
    }
}

int wpa_ctrl_request(wpa_ctrl& ctrl, std::string_view command, char* reply,
                     std::size_t& reply_length, EventCallback callback) {
    errno = 0;
    if (!send_command(ctrl, command)) {
        return -1;
    }
    const std::size_t capacity = reply_length;
    while (true) {
        const int ready = wait_readable(ctrl.socket, reply_timeout_ms);
        if (ready <= 0) {
            return ready < 0 ? -1 : -2;
        }
        const ssize_t received = recv(ctrl.socket, reply, capacity, 0);
        if (received < 0) {
            return -1;
        }
        const auto length = static_cast<std::size_t>(received);
        if (length == 0 || reply[0] != '<') {
            reply_length = length;
            return 0;
        }
        if (callback != nullptr) {
            deliver_event(callback, reply, length, capacity);
        }
    }
}

int wpa_ctrl_attach(wpa_ctrl& ctrl) {
    return request_ok(ctrl, "ATTACH");
}

int wpa_ctrl_detach(wpa_ctrl& ctrl) {
    return request_ok(ctrl, "DETACH");
}

int wpa_ctrl_recv(wpa_ctrl& ctrl, char* buffer, std::size_t& length) {
    const ssize_t received = recv(ctrl.socket, buffer, length, 0);
    if (received < 0) {
        return -1;
    }
    length = static_cast<std::size_t>(received);
    return 0;
}

bool wpa_ctrl_pending(const wpa_ctrl& ctrl) {
    return wait_readable(ctrl.socket, 0) > 0;
}

int wpa_ctrl_get_fd(const wpa_ctrl& ctrl) {
    return ctrl.socket;
}

void wpa_ctrl_cleanup() {
    const Directory directory = open_directory(client_directory);
    if (!directory) {
        return;
    }
    std::array<char, 1500> path{};
    while (const dirent* entry = next_entry(directory)) {
        const char* const name = &entry->d_name[0];
        if (!std::string_view(name).starts_with(client_prefix)) {
            continue;
        }
        const int length = std::snprintf(path.data(), path.size(), "%s/%s", client_directory, name);
        if (length >= 0 && static_cast<std::size_t>(length) < path.size()) {
            remove_file(path.data());
        }
    }
}

void os_sleep(std::int64_t seconds, std::int64_t microseconds) {
    wait_for(seconds, microseconds);
}

int os_get_time(std::int64_t& seconds, std::int64_t& microseconds) {
    timeval now{};
    const int result = gettimeofday(&now, nullptr);
    seconds = now.tv_sec;
    microseconds = now.tv_usec;
    return result;
}

std::size_t os_strlcpy(char* destination, const char* source, std::size_t size) {
    const std::size_t length = std::strlen(source);
    if (size != 0) {
        const std::size_t copied = std::min(length, size - 1);
        std::memcpy(destination, source, copied);
        destination[copied] = '\0';
    }
    return length;
}

} // namespace wivex
