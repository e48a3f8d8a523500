// SPDX-License-Identifier: Apache-2.0
#include "supplicant/supplicant.hpp"

#include "language/text.hpp"
#include "supplicant/agenda.hpp"
#include "supplicant/events.hpp"
#include "supplicant/presence.hpp"
#include "supplicant/script.hpp"

#include <signal.h>

#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

namespace bench {

namespace {

// Clients name their sockets "/tmp/wpa_ctrl_<process>-<number>".
pid_t process_of(const Client& client) {
    const std::string name = client.name();
    const std::size_t digits = name.find("wpa_ctrl_");
    return digits == std::string::npos ? -1 : std::atoi(name.c_str() + digits + 9);
}

std::string number_of(const Client& client) {
    const std::string name = client.name();
    return name.substr(name.rfind('-') + 1);
}

void reply(const ControlServer& server, const Client& client, const std::string& text) {
    server.send(client, text, ControlServer::WhenFull::fails);
}

class Supplicant {
public:
    explicit Supplicant(const SupplicantSettings& settings)
        : settings_(settings), script_(settings.script), around_(settings.around), start_(now()),
          presence_(settings.folder), events_(presence_.event_server(), agenda_) {}

    void start() {
        presence_.come();
        for (const Event& event : settings_.script.events) {
            if (!event.trigger.command) {
                plan_event(event, start_);
            }
        }
        for (const Fate& fate : settings_.script.fates) {
            if (!fate.trigger.command) {
                plan_turn(fate, start_);
            }
        }
    }

    [[noreturn]] void serve() {
        while (true) {
            presence_.listen(agenda_.time_to_next(presence_.asleep()),
                             [this](const ControlServer& server, const Command& command) {
                                 take(server, command);
                             });
            agenda_.do_what_is_due(presence_.asleep());
        }
    }

private:
    // A command on which the supplicant fell asleep: it is answered when it goes on.
    struct Unanswered {
        const ControlServer& server;
        Command command;
    };

    Microseconds after(Microseconds from, int delay_ms) const {
        return from + static_cast<Microseconds>(delay_ms) * 1000 / settings_.speed;
    }

    void plan_event(const Event& event, Microseconds from) {
        agenda_.plan(after(from, event.trigger.delay_ms),
                     [this, &event] { events_.send(event.text, event.times); });
    }

    void plan_turn(const Fate& fate, Microseconds from) {
        agenda_.plan(after(from, fate.trigger.delay_ms), [this, &fate] { turn(fate); });
    }

    // Signals go by the wall clock, however fast the tool's clock runs.
    void plan_signals(const Command& command, int count, Microseconds from) {
        for (const PlannedSignal& signal : settings_.signals) {
            if (signal.command == command.text && signal.command_count == count) {
                agenda_.plan(
                    from + static_cast<Microseconds>(signal.delay_ms) * 1000,
                    [process = process_of(command.client), number = signal.number] {
                        kill(process, number);
                    },
                    Agenda::InSleep::happens);
            }
        }
    }

    void log(const Command& command) const {
        dprintf(settings_.log_fd, "%lld %s \"%s\"\n", now() - start_,
                number_of(command.client).c_str(), escape(command.text).c_str());
    }

    void take(const ControlServer& server, const Command& command) {
        log(command);
        const int count = script_.count(command.text);
        const Microseconds from = now();
        plan_signals(command, count, from);
        for (const Fate* const fate : script_.fates_on(command.text)) {
            if (fate->turn == Turn::dies_after_answer || fate->trigger.delay_ms > 0) {
                plan_turn(*fate, from);
                continue;
            }
            turn(*fate);
            if (presence_.asleep()) {
                unanswered_.push_back({server, command});
            }
            return;
        }
        react(server, command, from);
    }

    void react(const ControlServer& server, const Command& command, Microseconds from) {
        for (const Event* const event : script_.events_on(command.text)) {
            plan_event(*event, from);
        }
        if (const Answer* const scripted = script_.answer_to(command.text)) {
            answer_by_script(*scripted, server, command, from);
            return;
        }
        if (command.text == "ATTACH" || command.text == "DETACH") {
            register_client(command);
            reply(server, command.client, "OK\n");
            return;
        }
        const Behaviour behaviour = usual_behaviour(command.text, around_);
        reply(server, command.client, behaviour.reply);
        follow(behaviour, from);
    }

    void answer_by_script(const Answer& answer, const ControlServer& server, const Command& command,
                          Microseconds from) {
        const Microseconds moment = after(from, answer.delay_ms);
        for (const std::string& text : answer.replies) {
            agenda_.plan(
                moment, [&server, client = command.client, &text] { reply(server, client, text); });
        }
        // What is answered well has its usual consequences.
        if (!answer.replies.empty() && answer.replies.front().starts_with("OK")) {
            follow(usual_behaviour(command.text, around_), moment);
        }
    }

    void register_client(const Command& command) {
        if (command.text == "ATTACH") {
            presence_.event_server().attach(command.client);
        } else {
            presence_.event_server().detach(command.client);
        }
    }

    void follow(const Behaviour& behaviour, Microseconds from) {
        around_.group = behaviour.group.value_or(around_.group);
        for (const PlannedEvent& event : behaviour.events) {
            if (!script_.withholds(event.text)) {
                agenda_.plan(after(from, event.delay_ms),
                             [this, text = event.text] { events_.send(text); });
            }
        }
    }

    void turn(const Fate& fate) {
        if (fate.turn == Turn::stops) {
            presence_.fall_asleep();
        } else {
            presence_.die();
            events_.drop();
        }
        if (fate.back_after_ms) {
            agenda_.plan(
                after(now(), *fate.back_after_ms), [this] { come_back(); },
                Agenda::InSleep::happens);
        }
    }

    void come_back() {
        presence_.wake_up();
        presence_.come();
        for (const Unanswered& late : std::exchange(unanswered_, {})) {
            react(late.server, late.command, now());
        }
    }

    const SupplicantSettings& settings_;
    Script script_;
    Neighbourhood around_;
    Microseconds start_;
    Presence presence_;
    Agenda agenda_;
    Events events_;
    std::vector<Unanswered> unanswered_;
};

} // namespace

void run_supplicant(const SupplicantSettings& settings, void (*ready)()) {
    Supplicant supplicant(settings);
    supplicant.start();
    ready();
    supplicant.serve();
}

} // namespace bench
