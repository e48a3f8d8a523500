// SPDX-License-Identifier: Apache-2.0
#include "supplicant/supplicant.hpp"

#include "language/text.hpp"

#include <fcntl.h>
#include <linux/sockios.h>
#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <limits>
#include <map>
#include <utility>

namespace bench {

namespace {

using Microseconds = long long;

constexpr std::array<const char*, 2> interfaces{"wlan0", "p2p0"};
constexpr Microseconds pause_when_full = 1000;

// A flood must not keep commands from being read.
constexpr int events_in_a_row = 200;

Microseconds now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<Microseconds>(time.tv_sec) * 1'000'000 + time.tv_nsec / 1000;
}

struct Client {
    sockaddr_un address{};
    socklen_t length = 0;

    std::string name() const {
        // "/tmp/wpa_ctrl_<process>-<number>"
        return address.sun_path;
    }
    pid_t process() const {
        const char* const digits = std::strstr(address.sun_path, "wpa_ctrl_");
        return digits == nullptr ? -1 : std::atoi(digits + 9);
    }
    bool operator==(const Client& other) const {
        return name() == other.name();
    }
};

// A command on which the supplicant fell asleep: it is answered when it goes on.
struct Unanswered {
    int socket = -1;
    Client client;
    std::string command;
};

// Something that happens later: a reply to one client, an event to all, or a turn of fate.
struct Due {
    enum class Kind { reply, event, owed_events, signal, fate, comeback };

    Microseconds at = 0;
    Kind kind = Kind::event;
    int socket = -1;
    Client client;
    std::string text;
    int times = 1;
    int signal = 0;
    const Fate* fate = nullptr;
};

class Supplicant {
public:
    explicit Supplicant(const SupplicantSettings& settings)
        : settings_(settings), around_(settings.around), start_(now()) {}

    void open_sockets() {
        mkdir(settings_.folder.c_str(), 0755);
        for (std::size_t index = 0; index < interfaces.size(); ++index) {
            sockets_[index] = open_socket(settings_.folder + "/" + interfaces[index]);
        }
    }

    void plan_timed_lines() {
        for (const Event& event : settings_.script.events) {
            if (!event.trigger.command) {
                plan_event(event, start_);
            }
        }
        for (const Fate& fate : settings_.script.fates) {
            if (!fate.trigger.command) {
                plan_fate(fate, start_);
            }
        }
    }

    [[noreturn]] void serve() {
        while (true) {
            std::array<pollfd, 2> waiting{};
            for (std::size_t index = 0; index < waiting.size(); ++index) {
                waiting[index] = {asleep_ ? -1 : sockets_[index], POLLIN, 0};
            }
            timespec pause{};
            const Microseconds left = time_to_next();
            pause.tv_sec = static_cast<time_t>(left / 1'000'000);
            pause.tv_nsec = static_cast<long>(left % 1'000'000) * 1000;
            ppoll(waiting.data(), waiting.size(), left < 0 ? nullptr : &pause, nullptr);
            for (const pollfd& ready : waiting) {
                if ((ready.revents & POLLIN) != 0) {
                    receive(ready.fd);
                }
            }
            do_what_is_due();
        }
    }

private:
    static int open_socket(const std::string& path) {
        unlink(path.c_str());
        const int server = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        sockaddr_un name{};
        name.sun_family = AF_UNIX;
        std::snprintf(name.sun_path, sizeof(name.sun_path), "%s", path.c_str());
        if (bind(server, reinterpret_cast<const sockaddr*>(&name), sizeof(name)) != 0) {
            std::perror(path.c_str());
            _exit(1);
        }
        return server;
    }

    Microseconds scaled(int delay_ms) const {
        return static_cast<Microseconds>(delay_ms) * 1000 / settings_.speed;
    }

    Microseconds time_to_next() const {
        if (dues_.empty()) {
            return -1;
        }
        Microseconds next = std::numeric_limits<Microseconds>::max();
        for (const Due& due : dues_) {
            if (!asleep_ || happens_in_sleep(due)) {
                next = std::min(next, due.at);
            }
        }
        return std::clamp(next - now(), Microseconds{0}, Microseconds{3'600'000'000});
    }

    void plan(Due due) {
        dues_.push_back(std::move(due));
    }
    void plan_event(const Event& event, Microseconds from) {
        Due due;
        due.at = from + scaled(event.trigger.delay_ms);
        due.kind = Due::Kind::event;
        due.text = event.text;
        due.times = event.times;
        plan(due);
    }
    void plan_fate(const Fate& fate, Microseconds from) {
        Due due;
        due.at = from + scaled(fate.trigger.delay_ms);
        due.kind = Due::Kind::fate;
        due.fate = &fate;
        plan(due);
    }

    void receive(int socket) {
        std::array<char, 8192> buffer{};
        Client client;
        client.length = sizeof(client.address);
        const ssize_t length =
            recvfrom(socket, buffer.data(), buffer.size(), 0,
                     reinterpret_cast<sockaddr*>(&client.address), &client.length);
        if (length < 0) {
            return;
        }
        const std::string command(buffer.data(), static_cast<std::size_t>(length));
        log(client, command);
        handle(socket, client, command, ++counts_[command]);
    }

    void log(const Client& client, const std::string& command) const {
        const std::string name = client.name();
        dprintf(settings_.log_fd, "%lld %s \"%s\"\n", now() - start_,
                name.substr(name.rfind('-') + 1).c_str(), escape(command).c_str());
    }

    // A pattern counts the commands that match it, whatever their texts.
    bool happens(const CommandMatch& match, const std::string& command) {
        if (!match.matches(command)) {
            return false;
        }
        int count = 0;
        for (const auto& [text, times] : counts_) {
            count += match.matches(text) ? times : 0;
        }
        return match.times.contain(count);
    }

    void handle(int socket, const Client& client, const std::string& command, int count) {
        const Microseconds from = now();
        plan_signals(client, command, count, from);
        for (const Fate& fate : settings_.script.fates) {
            if (fate.trigger.command && happens(*fate.trigger.command, command)) {
                if (fate.turn == Turn::dies_after_answer || fate.trigger.delay_ms > 0) {
                    plan_fate(fate, from);
                } else {
                    turn(fate);
                    if (asleep_) {
                        unanswered_.push_back({socket, client, command});
                    }
                    return;
                }
            }
        }
        react(socket, client, command, from);
    }

    void react(int socket, const Client& client, const std::string& command, Microseconds from) {
        for (const Event& event : settings_.script.events) {
            if (event.trigger.command && happens(*event.trigger.command, command)) {
                plan_event(event, from);
            }
        }
        answer(socket, client, command, from);
    }

    void plan_signals(const Client& client, const std::string& command, int count,
                      Microseconds from) {
        for (const PlannedSignal& signal : settings_.signals) {
            if (signal.command == command && signal.command_count == count) {
                Due due;
                due.at = from + static_cast<Microseconds>(signal.delay_ms) * 1000;
                due.kind = Due::Kind::signal;
                due.client = client;
                due.signal = signal.number;
                plan(due);
            }
        }
    }

    const Answer* scripted_answer(const std::string& command) {
        for (const Answer& answer : settings_.script.answers) {
            if (happens(answer.command, command)) {
                return &answer;
            }
        }
        return nullptr;
    }

    void answer(int socket, const Client& client, const std::string& command, Microseconds from) {
        if (const Answer* scripted = scripted_answer(command)) {
            Due due;
            due.at = from + scaled(scripted->delay_ms);
            due.kind = Due::Kind::reply;
            due.socket = socket;
            due.client = client;
            for (const std::string& reply : scripted->replies) {
                due.text = reply;
                plan(due);
            }
            // What is answered well has its usual consequences.
            if (scripted->replies.empty() || !scripted->replies.front().starts_with("OK")) {
                return;
            }
            follow(usual_behaviour(command, around_), due.at);
            return;
        }
        if (command == "ATTACH" || command == "DETACH") {
            register_client(client, command == "ATTACH");
            send_to(socket, client, "OK\n");
            return;
        }
        const Behaviour behaviour = usual_behaviour(command, around_);
        send_to(socket, client, behaviour.reply);
        follow(behaviour, from);
    }

    void register_client(const Client& client, bool attach) {
        std::erase(attached_, client);
        if (attach) {
            attached_.push_back(client);
        }
    }

    void follow(const Behaviour& behaviour, Microseconds from) {
        around_.group = behaviour.group.value_or(around_.group);
        for (const PlannedEvent& event : behaviour.events) {
            const auto& withheld = settings_.script.withheld;
            if (std::any_of(withheld.begin(), withheld.end(), [&](const std::string& part) {
                    return event.text.find(part) != std::string::npos;
                })) {
                continue;
            }
            Due due;
            due.at = from + scaled(event.delay_ms);
            due.text = event.text;
            plan(due);
        }
    }

    static bool send_to(int socket, const Client& client, const std::string& text) {
        return sendto(socket, text.data(), text.size(), MSG_DONTWAIT,
                      reinterpret_cast<const sockaddr*>(&client.address), client.length) >= 0 ||
               errno != EAGAIN;
    }

    // Unread events take up the room in which replies are sent too, and must leave some of it.
    bool leaves_room_for_replies() const {
        int unread = 0;
        int room = 0;
        socklen_t length = sizeof(room);
        return ioctl(sockets_[0], SIOCOUTQ, &unread) != 0 ||
               getsockopt(sockets_[0], SOL_SOCKET, SO_SNDBUF, &room, &length) != 0 ||
               unread < room / 2;
    }

    // Sends one event to everyone; false when somebody's queue is full.
    bool broadcast(const std::string& text) {
        return leaves_room_for_replies() &&
               std::all_of(attached_.begin(), attached_.end(), [&](const Client& client) {
                   return send_to(sockets_[0], client, text);
               });
    }

    // Sends what an event still owes, as far as it fits now. Returns when to go on, or -1.
    Microseconds send_some(Due& due) {
        for (int sent = 0; due.times != 0 && !attached_.empty(); ++sent) {
            if (sent == events_in_a_row || !broadcast(due.text)) {
                return now() + (sent == events_in_a_row ? 0 : pause_when_full);
            }
            due.times -= due.times > 0 ? 1 : 0;
        }
        return -1;
    }

    // Events leave in the order in which they fall due: one that does not fit yet holds those
    // behind it back. Only an endless one lets others pass.
    void send_event(Due due) {
        if (due.times > 0) {
            owed_.push_back(std::move(due));
            if (owed_.size() == 1) {
                send_owed_events();
            }
            return;
        }
        due.at = send_some(due);
        if (due.at >= 0) {
            plan(std::move(due));
        }
    }

    void send_owed_events() {
        while (!owed_.empty()) {
            Due later;
            later.at = send_some(owed_.front());
            later.kind = Due::Kind::owed_events;
            if (later.at >= 0) {
                plan(std::move(later));
                return;
            }
            owed_.pop_front();
        }
    }

    void turn(const Fate& fate) {
        if (fate.turn == Turn::stops) {
            asleep_ = true;
        } else {
            for (int& socket : sockets_) {
                close(std::exchange(socket, -1));
            }
            attached_.clear();
            owed_.clear();
        }
        if (fate.back_after_ms) {
            Due due;
            due.at = now() + scaled(*fate.back_after_ms);
            due.kind = Due::Kind::comeback;
            plan(due);
        }
    }

    void come_back() {
        asleep_ = false;
        if (sockets_[0] < 0) {
            open_sockets();
        }
        for (const Unanswered& late : std::exchange(unanswered_, {})) {
            react(late.socket, late.client, late.command, now());
        }
    }

    static bool happens_in_sleep(const Due& due) {
        return due.kind == Due::Kind::comeback || due.kind == Due::Kind::signal;
    }

    void do_due(const Due& due) {
        switch (due.kind) {
        case Due::Kind::reply:
            send_to(due.socket, due.client, due.text);
            return;
        case Due::Kind::event:
            send_event(due);
            return;
        case Due::Kind::owed_events:
            send_owed_events();
            return;
        case Due::Kind::signal:
            kill(due.client.process(), due.signal);
            return;
        case Due::Kind::fate:
            turn(*due.fate);
            return;
        case Due::Kind::comeback:
            come_back();
            return;
        }
    }

    void do_what_is_due() {
        const Microseconds time = now();
        std::stable_sort(dues_.begin(), dues_.end(),
                         [](const Due& a, const Due& b) { return a.at < b.at; });
        std::vector<Due> ready;
        std::erase_if(dues_, [&](const Due& due) {
            const bool now_due = due.at <= time && (!asleep_ || happens_in_sleep(due));
            if (now_due) {
                ready.push_back(due);
            }
            return now_due;
        });
        for (const Due& due : ready) {
            do_due(due);
        }
    }

    const SupplicantSettings& settings_;
    Neighbourhood around_;
    Microseconds start_;
    std::array<int, 2> sockets_{-1, -1};
    bool asleep_ = false;
    std::vector<Client> attached_;
    std::map<std::string, int> counts_;
    std::vector<Due> dues_;
    std::deque<Due> owed_;
    std::vector<Unanswered> unanswered_;
};

} // namespace

void run_supplicant(const SupplicantSettings& settings, void (*ready)()) {
    Supplicant supplicant(settings);
    supplicant.open_sockets();
    supplicant.plan_timed_lines();
    ready();
    supplicant.serve();
}

} // namespace bench
