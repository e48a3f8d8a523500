// SPDX-License-Identifier: Apache-2.0
#include "fake_supplicant.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace wivex::test_support {

namespace {

bool become_root_of_a_user_namespace() {
    const auto uid = ::geteuid();
    const auto gid = ::getegid();
    if (::unshare(CLONE_NEWUSER) != 0) {
        return false;
    }
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/uid_map") << "0 " << uid << " 1";
    std::ofstream("/proc/self/gid_map") << "0 " << gid << " 1";
    return true;
}

bool mount_private_tmp() {
    if (::geteuid() != 0 && !become_root_of_a_user_namespace()) {
        return false;
    }
    return ::unshare(CLONE_NEWNS) == 0 &&
           ::mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("tmp", "/tmp", "tmpfs", 0, nullptr) == 0;
}

void take_turns() {
    // Kept open until the process ends.
    static const int lock =
        ::open("/var/tmp/wivex-unit-tests.lock", O_CREAT | O_RDWR | O_CLOEXEC, 0666);
    ::flock(lock, LOCK_EX);
}

} // namespace

void use_private_tmp() {
    static const bool done = [] {
        if (!mount_private_tmp()) {
            take_turns();
        }
        return true;
    }();
    static_cast<void>(done);
}

FakeSupplicant::FakeSupplicant(const std::string& path) : path_(path) {
    if (!server_.open(path)) {
        std::perror("fake supplicant: bind");
        std::abort();
    }
    thread_ = std::jthread([this](const std::stop_token& stop) { serve(stop); });
}

FakeSupplicant::~FakeSupplicant() {
    die();
}

void FakeSupplicant::die() {
    if (!server_.is_open()) {
        return;
    }
    thread_.request_stop();
    thread_.join();
    server_.close();
    if (path_.front() != '@') {
        ::unlink(path_.c_str());
    }
}

void FakeSupplicant::answer(const std::string& command, Datagrams datagrams,
                            std::chrono::milliseconds delay) {
    const std::lock_guard lock(mutex_);
    answers_[command].push_back({std::move(datagrams), delay});
}

void FakeSupplicant::event_after(const std::string& command, const std::string& event,
                                 std::chrono::milliseconds delay) {
    const std::lock_guard lock(mutex_);
    events_[command].push_back({event, delay});
}

void FakeSupplicant::send_event(const std::string& event) {
    std::vector<bench::Client> clients;
    {
        const std::lock_guard lock(mutex_);
        clients = server_.attached();
    }
    for (const auto& client : clients) {
        send_to(client, event);
    }
}

std::vector<Received> FakeSupplicant::received() const {
    const std::lock_guard lock(mutex_);
    return received_;
}

std::vector<std::string> FakeSupplicant::commands() const {
    std::vector<std::string> texts;
    for (const auto& one : received()) {
        texts.push_back(one.command);
    }
    return texts;
}

std::vector<std::string> FakeSupplicant::spoken() const {
    auto texts = commands();
    std::erase(texts, "ATTACH");
    std::erase(texts, "DETACH");
    return texts;
}

bool FakeSupplicant::has_said_all() const {
    const std::lock_guard lock(mutex_);
    return handled_ == received_.size();
}

bool FakeSupplicant::wait_for_commands(std::size_t count) const {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, std::chrono::seconds(5),
                             [&] { return received_.size() >= count; });
}

void FakeSupplicant::serve(const std::stop_token& stop) {
    while (!stop.stop_requested()) {
        pollfd waiting{server_.fd(), POLLIN, 0};
        if (::poll(&waiting, 1, 10) <= 0) {
            continue;
        }
        if (const auto command = server_.receive()) {
            handle(*command);
        }
    }
}

void FakeSupplicant::handle(const bench::Command& command) {
    Answer answer{{"OK\n"}, {}};
    std::vector<Event> events;
    {
        const std::lock_guard lock(mutex_);
        received_.push_back({command.text, command.client.address});
        changed_.notify_all();
        if (const auto known = answers_.find(command.text); known != answers_.end()) {
            answer = known->second.front();
            if (known->second.size() > 1) {
                known->second.pop_front();
            }
        }
        if (const auto known = events_.find(command.text); known != events_.end()) {
            events = known->second;
        }
        if (command.text == "ATTACH") {
            server_.attach(command.client);
        } else if (command.text == "DETACH") {
            server_.detach(command.client);
        }
    }
    std::this_thread::sleep_for(answer.delay);
    for (const auto& datagram : answer.datagrams) {
        send_to(command.client, datagram);
    }
    for (const auto& event : events) {
        std::this_thread::sleep_for(event.delay);
        send_event(event.text);
    }
    const std::lock_guard lock(mutex_);
    ++handled_;
}

void FakeSupplicant::send_to(const bench::Client& client, const std::string& text) const {
    server_.send(client, text, bench::ControlServer::WhenFull::waits);
}

} // namespace wivex::test_support
