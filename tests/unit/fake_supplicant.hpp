// SPDX-License-Identifier: Apache-2.0
// A supplicant for unit tests: a control socket whose answers a test chooses.
//
// Every command is answered "OK\n" unless the test says otherwise. Clients that sent "ATTACH" get
// the events.
#pragma once

#include "supplicant/control_server.hpp"

#include <sys/un.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace wivex::test_support {

using Datagrams = std::vector<std::string>;

/// Gives this process a /tmp of its own, because opening a session removes every client socket file
/// there, those of tests that run at the same time too. Where that is not allowed, such tests take
/// turns.
void use_private_tmp();

/// What the supplicant received, and from whom.
struct Received {
    std::string command;
    sockaddr_un sender;
};

class FakeSupplicant {
public:
    /// Listens at `path`; a first character '@' stands for the zero byte of an abstract name.
    explicit FakeSupplicant(const std::string& path);
    ~FakeSupplicant();
    FakeSupplicant(const FakeSupplicant&) = delete;
    FakeSupplicant& operator=(const FakeSupplicant&) = delete;

    /// The next time `command` comes it is answered with these datagrams, `delay` later. Answers
    /// given for the same command are used one after the other, and the last one again and again.
    /// No datagram at all is silence.
    void answer(const std::string& command, Datagrams datagrams,
                std::chrono::milliseconds delay = {});

    /// From then on each answer to `command` is followed by this event, `delay` later.
    void event_after(const std::string& command, const std::string& event,
                     std::chrono::milliseconds delay = {});

    /// Sends an event to every attached client now. Waits while a client's queue is full.
    void send_event(const std::string& event);

    /// The commands received so far, "ATTACH" and "DETACH" included.
    std::vector<std::string> commands() const;

    /// The commands received so far without "ATTACH" and "DETACH".
    std::vector<std::string> spoken() const;

    std::vector<Received> received() const;

    /// Whether every command received so far has its answer and its events.
    bool has_said_all() const;

    /// Waits until `count` commands were received. False when that takes longer than 5 seconds.
    bool wait_for_commands(std::size_t count) const;

    /// Closes the socket: from then on the supplicant is gone.
    void die();

private:
    struct Answer {
        Datagrams datagrams;
        std::chrono::milliseconds delay;
    };
    struct Event {
        std::string text;
        std::chrono::milliseconds delay;
    };

    void serve(const std::stop_token& stop);
    void handle(const bench::Command& command);
    void send_to(const bench::Client& client, const std::string& text) const;

    bench::ControlServer server_;
    std::string path_;
    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    std::map<std::string, std::deque<Answer>> answers_;
    std::map<std::string, std::vector<Event>> events_;
    std::vector<Received> received_;
    std::size_t handled_ = 0;
    std::jthread thread_;
};

} // namespace wivex::test_support
