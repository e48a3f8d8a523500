// SPDX-License-Identifier: Apache-2.0
// The doctor and the run over every scenario of the bench. A new scenario is in this test at once;
// when its failure begins during the run, one row here says so.

#include "scenario_names.hpp"
#include "truth.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

namespace doctor_test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

namespace fs = std::filesystem;

struct Case {
    std::string scenario;
    /// Letters of the run's options.
    std::string letters;
};

void PrintTo(const Case& tried, std::ostream* stream) {
    *stream << tried.scenario << " -" << tried.letters;
}

std::string text_of(const std::string& scenario) {
    std::ifstream file(fs::path(SCENARIO_FOLDER) / (scenario + ".scenario"));
    return {std::istreambuf_iterator<char>(file), {}};
}

bool says(const std::string& scenario, const char* text) {
    return text_of(scenario).find(text) != std::string::npos;
}

// The modes that a scenario is about.
std::string letters_of(const std::string& scenario) {
    if (scenario.starts_with("loopback/")) {
        return "l";
    }
    if (scenario.starts_with("mac/")) {
        return "M";
    }
    if (scenario.starts_with("go-")) {
        return "g";
    }
    if (scenario.starts_with("p2p-")) {
        return "dc";
    }
    if (scenario.starts_with("supplicant-")) {
        return "wdcg";
    }
    return says(scenario, "\nair ") ? "S" : "w";
}

std::vector<Case> all_cases() {
    std::vector<Case> cases;
    for (const std::string& scenario : test_tools::scenario_names(SCENARIO_FOLDER)) {
        for (const char letter : letters_of(scenario)) {
            cases.push_back({scenario, std::string(1, letter)});
        }
    }
    cases.push_back({"diagnostics-together", "lMw"});
    std::sort(cases.begin(), cases.end(), [](const Case& one, const Case& other) {
        return one.scenario + one.letters < other.scenario + other.letters;
    });
    return cases;
}

World world_of(const Case& tried) {
    World world;
    world.scenario = tried.scenario;
    for (const char letter : tried.letters) {
        world.options.push_back(std::string("-") + letter);
    }
    // Addresses and traffic take real time.
    if (says(tried.scenario, "dhcp absent") || says(tried.scenario, "check_iperf=yes")) {
        world.speed = 1;
        world.interrupt_at = "40000ms";
    } else if (!says(tried.scenario, "program udhcpc")) {
        world.lines = bench_test::quick_address;
    }
    return world;
}

constexpr const char* no_connection = "Unable to Connect Time out!!!";
constexpr const char* not_found = "is not found!!!";
constexpr const char* no_address = "Fail to run dhclient!!!";
constexpr const char* loopback = "[WIFI]### LOOPBACK FAIL ###";
constexpr const char* mac = "[WIFI]MAC PRINT FAIL";
constexpr const char* differ = "[WIFI]Both addresses are not same...";
constexpr const char* no_group = "unable to start p2p group";
constexpr const char* no_proto = "SET_NETWORK Command for proto is not successful";
constexpr const char* no_psk = "SET_NETWORK Command for psk is not successful";
constexpr const char* no_scan = "ERROR:SCAN-FAIL";
constexpr const char* no_connect = "connect:TEST CASE FAIL";
constexpr const char* no_find = "Failed to send P2P_FIND command to wpa_supplicant";
constexpr const char* no_peer = "P2P FIND: TIME OUT !!";
constexpr const char* kernel_scan = "[WIFI]do_scan_trigger() failed with";
constexpr const char* scan = "[WIFI]SCAN FAIL";
constexpr const char* no_open = "[WIFI]Unable to open sockets!!";
constexpr const char* no_attach = "[WIFI]Unable to attach event socket!!";
constexpr const char* no_wlan0 = "[WIFI][401]IOCTL fail";
constexpr const char* diag = "err ReadTargetRange failed";

// What begins during the run, and why nobody can see it before. The name is that of a scenario, or
// what it begins with.
struct Later {
    const char* scenario;
    std::vector<std::string> texts;
    const char* why;
};

const std::vector<Later>& later_table() {
    static const std::vector<Later> table{
        {"access-point-absent", {not_found}, "the air is looked at with --scan only"},
        {"scan-results-refused", {not_found}, "the listing is refused during the run"},
        {"connection-never-comes", {no_connection}, "it is selected during the run"},
        {"endless-event-flood", {no_connection}, "it is selected during the run"},
        {"wrong-pass-phrase", {no_connection}, "the access point judges the pass phrase"},
        {"dhcp-server-absent", {no_address}, "addresses are asked for during the run"},
        {"p2p-dhcp-fails", {no_address}, "addresses are asked for during the run"},
        {"diagnostics-together", {loopback, mac, differ}, "the chip is asked by the run alone"},
        {"go-group-refused", {no_group}, "the group is asked for during the run"},
        {"network-refused-at-proto", {no_proto}, "the network is set during the run"},
        {"network-refused-at-psk", {no_psk}, "the network is set during the run"},
        {"replies-with-fail-inside", {no_psk}, "the network is set during the run"},
        {"some-iterations-fail", {no_psk, no_scan}, "the commands are refused later"},
        {"p2p-connect-refused", {no_connect}, "the peer is asked during the run"},
        {"p2p-removal-refused", {no_connect}, "the group is ended during the run"},
        {"p2p-find-refused", {no_find}, "the supplicant says it has Wi-Fi Direct, and refuses"},
        {"p2p-peer-never-found", {no_peer}, "the peer is looked for by the run alone"},
        {"p2p-wrong-peer", {no_peer}, "the peer is looked for by the run alone"},
        {"scan-aborted", {kernel_scan, scan}, "the kernel scans during the run"},
        {"scan-answer-lost", {kernel_scan, scan}, "the kernel scans during the run"},
        {"scan-dump", {scan}, "the kernel scans during the run"},
        {"scan-overflow", {kernel_scan, scan}, "the kernel scans during the run"},
        {"scan-trigger-refused", {kernel_scan, scan}, "the kernel scans during the run"},
        {"scan-refused", {no_scan}, "the supplicant scans during the run, or with --scan"},
        {"scan-busy", {no_scan}, "the supplicant scans during the run, or with --scan"},
        {"supplicant-answers-after-11", {no_connect}, "one answer of the run comes too late"},
        {"supplicant-answers-twice", {no_connect, not_found}, "one answer of the run comes twice"},
        {"supplicant-killed", {no_connect, no_group}, "it dies during the run"},
        {"supplicant-restarts", {no_connect}, "it dies during the run"},
        {"supplicant-dies", {no_open}, "it dies during the run"},
        {"supplicant-stops-for-good", {no_connect, no_attach}, "it stops during the run"},
        {"loopback/combo-content-error", {loopback}, "the chip is asked by the run alone"},
        {"loopback/combo-garbage", {loopback}, "the chip is asked by the run alone"},
        {"loopback/combo-nothing-sent", {loopback}, "the chip is asked by the run alone"},
        {"loopback/combo-refused", {loopback}, "the chip is asked by the run alone"},
        {"loopback/combo-sequence-error", {loopback}, "the chip is asked by the run alone"},
        {"loopback/broadcom-slow", {loopback}, "the chip is asked by the run alone"},
        {"mac/ath6kl-1", {mac}, "the register is read by the run alone"},
        {"mac/ath6kl-20", {mac}, "the register is read by the run alone"},
        {"mac/ath6kl-empty", {mac}, "the register is read by the run alone"},
        {"mac/ath6kl-long", {mac}, "the register is read by the run alone"},
        {"mac/ath6kl-second", {mac}, "the register is read by the run alone"},
        {"mac/ath6kl-keeps", {mac}, "the program fails only when it works"},
        {"mac/ath6kl-loses", {mac}, "the program fails only when it works"},
        {"mac/ath6kl-stat", {mac}, "the program fails only when it works"},
        {"mac/ath6kl-unreadable", {mac}, "the program fails only when it works"},
        {"mac/broadcom-other", {mac, differ}, "the chip is asked by the run alone"},
        {"mac/kernel-refused", {mac, no_wlan0}, "wlan0 is there, and its address is refused"},
        {"mac/combo-short", {diag}, "target memory is read by the run alone"},
    };
    return table;
}

std::vector<std::string> begins_later(const std::string& scenario) {
    std::vector<std::string> texts;
    for (const Later& row : later_table()) {
        if (scenario.starts_with(row.scenario)) {
            texts.insert(texts.end(), row.texts.begin(), row.texts.end());
        }
    }
    return texts;
}

class Truth : public testing::TestWithParam<Case> {};

TEST_P(Truth, is_told_of) {
    const World world = world_of(GetParam());
    const Diagnosis diagnosis = diagnose(world);
    const std::string console = run_console(world);
    SCOPED_TRACE(diagnosis.text + "\n--- the run ---\n" + console);
    // Both were there: the doctor with a whole report, the run with its first and its last line.
    ASSERT_FALSE(diagnosis.points.empty());
    ASSERT_THAT(console, HasSubstr("[WIFI]WIVEX2_0_160421_INCREASE_SCAN_RESULT_SIZE"));
    RecordProperty("doctor", diagnosis.ready           ? "ready"
                             : diagnosis.bad().empty() ? "not known"
                                                       : "named");
    EXPECT_EQ(diagnosis.status, diagnosis.ready ? 0 : 1);
    EXPECT_THAT(lies(diagnosis, console, begins_later(GetParam().scenario)), IsEmpty());
}

std::string name_of(const testing::TestParamInfo<Case>& info) {
    std::string name = info.param.scenario + "_" + info.param.letters;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char letter) { return std::isalnum(letter) == 0; },
        '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(every_scenario, Truth, testing::ValuesIn(all_cases()), name_of);

} // namespace
} // namespace doctor_test
