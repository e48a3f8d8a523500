// SPDX-License-Identifier: Apache-2.0
// The programs that the run starts through the shell, where the configuration says that they are.
#include "check_values.hpp"
#include "checks.hpp"
#include "common/known_modules.hpp"
#include "predicted_texts.hpp"
#include "probe.hpp"
#include "program_answer.hpp"
#include "run/readiness.hpp"
#include "text.hpp"
#include "tool_console.hpp"

namespace wivex::doctor {

namespace {

using namespace predicted;

struct Wanted {
    /// As it stands in the run's command line.
    std::string command;
    const char* effect;
    /// What the run prints without it; empty: what the shell says.
    const char* prints;
    const char* mend;
};

std::string shell_says(const Wanted& wanted, FoundProgram::State state) {
    return wanted.command +
           (state == FoundProgram::State::missing ? ": not found" : ": Permission denied");
}

// The part of a command that the shell takes for the program's name.
std::string program_word(const std::string& command) {
    return command.substr(0, command.find_first_of(" \t"));
}

bool has_shell_characters(const std::string& command) {
    return command.find_first_of("$`\\\"'*?[]{}()<>|&;~#!\r\n") != std::string::npos;
}

void judge(const Wanted& wanted, Point& point) {
    if (has_shell_characters(wanted.command)) {
        point.unknown("the shell takes " + quoted(wanted.command) + " in a way of its own", "",
                      "write a plain path");
        return;
    }
    const FoundProgram found = find_program(program_word(wanted.command));
    if (found.state == FoundProgram::State::runs) {
        point.found += (point.found.empty() ? "" : ", ") + printable(found.path);
        return;
    }
    const bool missing = found.state == FoundProgram::State::missing;
    std::string mend = missing ? wanted.mend : "chmod +x " + shell_word(found.path);
    if (const std::size_t slash = wanted.command.rfind('/');
        missing && slash != std::string::npos) {
        mend = "a folder with its / at the end, in which the program is";
    }
    point.bad(quoted(wanted.command) + (missing ? " is not there: " : " cannot be started: ") +
                  wanted.effect,
              wanted.prints[0] != '\0' ? wanted.prints : shell_says(wanted, found.state), mend);
}

void judge_iperf(const Facts& facts, Point& point) {
    const Wanted iperf{facts.config.iperf_path + "iperf",
                       "no traffic flows, and the run does not notice it", "",
                       "install iperf, version 2, or set check_iperf=no"};
    const std::size_t before = point.remarks.size();
    judge(iperf, point);
    if (point.remarks.size() != before) {
        return;
    }
    const std::string path = find_program(program_word(iperf.command)).path;
    const ProgramAnswer answer = ask_program(path, "-v");
    if (answer.text.find("iperf 3") != std::string::npos) {
        point.bad(quoted(path) + " is version 3, which does not speak with version 2",
                  "iperf3: error", "install iperf, version 2");
    } else if (answer.text.find("iperf version 2") == std::string::npos) {
        point.unknown(quoted(path) +
                          " -v does not tell its version: " + quoted(first_line(answer.text)),
                      "", "install iperf, version 2");
    }
}

bool interface_is_down(const Facts& facts) {
    const std::string path = interface_flags_path(facts.config);
    std::int32_t status = interface_status::ready;
    if (!why_unreadable(path).empty()) {
        return false;
    }
    read_interface_flag(path, 1, status);
    static_cast<void>(take_tool_output());
    return status == interface_status::flag_clear;
}

std::vector<Wanted> wanted_programs(const Facts& facts) {
    std::vector<Wanted> wanted;
    const RunPlan& plan = facts.plan;
    const bool takes_address = plan.mode == 'w' || plan.mode == 'c' || plan.mode == 'd';
    if (interface_is_down(facts)) {
        wanted.push_back({"ifconfig", "the interface stays down",
                          "[WIFI]ERROR:WiFi network interface not up",
                          "install net-tools, or link busybox as ifconfig"});
    } else if (plan.may_own_group()) {
        wanted.push_back({"ifconfig", "as owner of the group the device gets no address", "",
                          "install net-tools, or link busybox as ifconfig"});
    }
    if (takes_address) {
        wanted.push_back({"udhcpc", "the device gets no address", no_address,
                          "install udhcpc, or link busybox as udhcpc"});
        wanted.push_back({"killall", "the run never gets past its DHCP client", "",
                          "install psmisc, or link busybox as killall"});
    }
    if (plan.may_own_group()) {
        wanted.push_back({facts.config.dhcpd_path + "udhcpd",
                          "as owner of the group the device serves no addresses", "",
                          "install udhcpd, or link busybox as udhcpd"});
    }
    if (plan.mac && family_of(facts.chip_type) == ChipFamily::ath6kl) {
        wanted.push_back({"cat", "the register cannot be read", "[WIFI]Can not read reg_dump",
                          "install coreutils, or link busybox as cat"});
        wanted.push_back({"rm", "the copy of the register cannot be removed",
                          "[WIFI]Can not remove temp_file1",
                          "install coreutils, or link busybox as rm"});
    }
    return wanted;
}

} // namespace

Point check_programs(const Facts& facts) {
    Point point("programs");
    std::vector<Wanted> wanted = wanted_programs(facts);
    const bool traffic = runs_iperf(facts);
    if (wanted.empty() && !traffic) {
        point.skip("this run starts none");
        return point;
    }
    judge({"/bin/sh", "no program can be started",
           facts.plan.uses_supplicant() && facts.plan.mode != 'g' ? no_address : "",
           "install a shell as /bin/sh"},
          point);
    for (const Wanted& program : wanted) {
        judge(program, point);
    }
    if (traffic) {
        judge_iperf(facts, point);
    }
    return point;
}

} // namespace wivex::doctor
