// SPDX-License-Identifier: Apache-2.0
// control-script SOCKET: drive a supplicant or access point through its control socket by a small
// script on standard input. One step a line; blank lines and lines that begin with # are skipped.
//
//     send COMMAND        send a command; its reply is printed
//     expect TEXT         the last reply contains TEXT
//     wait SECONDS TEXT   read events, each one once, until one contains TEXT
//     pause SECONDS
//     repeat COUNT        run the steps up to the line "end" COUNT times, once at least; may be
//                         nested
//     end
//
// Replies and events are printed as they come. Exit status 0 when every step was met; otherwise 1
// and a line on standard error that names the step.
#include "control_socket.hpp"

#include <unistd.h>

#include <cstdlib>
#include <deque>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

using Seconds = std::chrono::duration<double>;

constexpr Seconds reply_time_limit{10};

// One attached connection: replies and events come in on the same socket.
class Connection {
public:
    bool open(std::string_view server);
    std::optional<std::string> request(std::string_view command);
    // Reads events until one contains the text; false when the time is up.
    bool wait_for(std::string_view text, Seconds limit);

private:
    std::optional<std::string> next_event(Clock::time_point deadline);

    ControlSocket socket_;
    std::deque<std::string> events_;
};

bool Connection::open(std::string_view server) {
    return socket_.open(server, "/tmp/control-script-" + std::to_string(getpid())) &&
           request("ATTACH") == "OK\n";
}

std::optional<std::string> Connection::request(std::string_view command) {
    if (!socket_.send(command)) {
        return std::nullopt;
    }
    const auto deadline = Clock::now() + std::chrono::ceil<Clock::duration>(reply_time_limit);
    while (auto message = socket_.receive(deadline)) {
        if (!is_event(*message)) {
            return message;
        }
        events_.push_back(*std::move(message));
    }
    return std::nullopt;
}

std::optional<std::string> Connection::next_event(Clock::time_point deadline) {
    if (events_.empty()) {
        return socket_.receive(deadline);
    }
    std::string event = std::move(events_.front());
    events_.pop_front();
    return event;
}

bool Connection::wait_for(std::string_view text, Seconds limit) {
    const auto deadline = Clock::now() + std::chrono::ceil<Clock::duration>(limit);
    while (const auto event = next_event(deadline)) {
        std::cout << *event << std::endl;
        if (event->find(text) != std::string::npos) {
            return true;
        }
    }
    return false;
}

// The first word of a text; the text keeps what follows the blank after it.
std::string take_word(std::string& text) {
    const auto blank = text.find(' ');
    std::string word = text.substr(0, blank);
    text.erase(0, blank == std::string::npos ? blank : blank + 1);
    return word;
}

double take_number(std::string& text) {
    return std::strtod(take_word(text).c_str(), nullptr);
}

class Script {
public:
    explicit Script(Connection& connection) : connection_(connection) {}

    bool read(std::istream& input);
    bool run();

private:
    bool step(std::string line);
    bool send(const std::string& command);
    bool expect(const std::string& text) const {
        return last_reply_.find(text) != std::string::npos;
    }
    bool wait(std::string arguments);

    Connection& connection_;
    std::vector<std::string> lines_;
    std::string last_reply_;
};

// False when the repeats and ends do not match.
bool Script::read(std::istream& input) {
    int depth = 0;
    for (std::string line; std::getline(input, line);) {
        line.erase(0, line.find_first_not_of(" \t"));
        if (line.empty() || line.front() == '#') {
            continue;
        }
        depth += line.starts_with("repeat ") ? 1 : 0;
        depth -= line == "end" ? 1 : 0;
        if (depth < 0) {
            return false;
        }
        lines_.push_back(line);
    }
    return depth == 0;
}

bool Script::run() {
    struct Loop {
        std::size_t start;
        int rounds_left;
    };
    std::vector<Loop> loops;
    for (std::size_t at = 0; at < lines_.size(); ++at) {
        std::string line = lines_[at];
        if (line.starts_with("repeat ")) {
            take_word(line);
            loops.push_back({at, static_cast<int>(take_number(line))});
        } else if (line == "end") {
            if (--loops.back().rounds_left > 0) {
                at = loops.back().start;
            } else {
                loops.pop_back();
            }
        } else if (!step(line)) {
            std::cerr << "control-script: not met: " << line << std::endl;
            return false;
        }
    }
    return true;
}

bool Script::step(std::string line) {
    const std::string word = take_word(line);
    if (word == "send") {
        return send(line);
    }
    if (word == "expect") {
        return expect(line);
    }
    if (word == "wait") {
        return wait(line);
    }
    if (word == "pause") {
        std::this_thread::sleep_for(Seconds(take_number(line)));
        return true;
    }
    return false;
}

bool Script::send(const std::string& command) {
    const auto reply = connection_.request(command);
    if (!reply) {
        return false;
    }
    last_reply_ = *reply;
    std::cout << last_reply_ << (last_reply_.ends_with('\n') ? "" : "\n") << std::flush;
    return true;
}

bool Script::wait(std::string arguments) {
    const Seconds limit(take_number(arguments));
    return connection_.wait_for(arguments, limit);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: control-script SOCKET <SCRIPT" << std::endl;
        return 1;
    }
    Connection connection;
    Script script(connection);
    if (!script.read(std::cin)) {
        std::cerr << "control-script: repeat without end, or end without repeat" << std::endl;
        return 1;
    }
    if (!connection.open(argv[1])) {
        std::cerr << "control-script: cannot attach to " << argv[1] << std::endl;
        return 1;
    }
    return script.run() ? 0 : 1;
}
