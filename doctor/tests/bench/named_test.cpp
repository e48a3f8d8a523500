// SPDX-License-Identifier: Apache-2.0
// Faults that a technician makes, each in a world of its own: the doctor names them, and the run
// fails as it says.

#include "truth.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace doctor_test {
namespace {

using testing::Contains;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr const char* usual_lines =
    "device_type=USB\\nwifidev=/sys/class/net\\ninterface_name=wlan0\\n"
    "ctrl_iface=/tmp/wpa_supplicant\\ngo_ssid=bench-ap\\n"
    "go_passphrase=bench-pass-phrase\\n";

// A configuration file of these lines, in front of the usual ones.
World with_file(const std::string& first_lines, std::vector<std::string> options = {"-w"}) {
    World world;
    world.lines = std::string(bench_test::quick_address) + "\nfile /tmp/my.cfg \"" + first_lines +
                  usual_lines + "\"\n";
    world.options = std::move(options);
    world.options.emplace_back("-F/tmp/my.cfg");
    return world;
}

// The configuration file holds these lines and no others.
World with_only(const std::string& text) {
    World world;
    world.lines = "file /tmp/my.cfg \"" + text + "\"\n";
    world.options = {"-w", "-F/tmp/my.cfg"};
    return world;
}

World with(const std::string& lines, std::vector<std::string> options = {"-w"}) {
    World world;
    world.lines = lines;
    if (lines.find("program") == std::string::npos) {
        world.lines = world.lines + "\n" + bench_test::quick_address;
    }
    world.options = std::move(options);
    return world;
}

// The point is bad, says what the run prints, and the run prints it.
void expect_named(const World& world, const std::string& point, const std::string& prints) {
    const Diagnosis diagnosis = diagnose(world);
    const std::string console = run_console(world);
    SCOPED_TRACE(diagnosis.text + "\n--- the run ---\n" + console);
    EXPECT_EQ(diagnosis.status, 1);
    EXPECT_THAT(diagnosis.bad(),
                Contains(AllOf(Field(&Remark::point, point), Field(&Remark::run_prints, prints),
                               Field(&Remark::mend, Not(IsEmpty())))));
    EXPECT_THAT(console, HasSubstr(prints));
    EXPECT_THAT(lies(diagnosis, console, {}), IsEmpty());
}

// ---- configuration ------------------------------------------------------------------------------

TEST(Named, configuration_file_that_is_not_there) {
    World world = with("");
    world.options.emplace_back("-F/tmp/none.cfg");
    expect_named(world, "configuration", "[WIFI]Configuration file problem.Plese check");
}

TEST(Named, misspelt_key) {
    expect_named(with_file("go_sid=home\\n"), "configuration", "[WIFI]Unknown key value pair..");
}

TEST(Named, blank_behind_a_folder) {
    const World world =
        with_only("device_type=USB\\nwifidev=/sys/class/net\\n"
                  "interface_name=wlan0\\nctrl_iface=/tmp/wpa_supplicant \\ngo_ssid=bench-ap\\n"
                  "go_passphrase=bench-pass-phrase\\n");
    expect_named(world, "configuration", "[WIFI]Unable to open sockets!!");
}

TEST(Named, carriage_returns_at_all_ends) {
    const World world = with_only("device_type=USB\\r\\nwifidev=/sys/class/net\\r\\n"
                                  "interface_name=wlan0\\r\\nctrl_iface=/tmp/wpa_supplicant\\r\\n"
                                  "go_ssid=bench-ap\\r\\ngo_passphrase=bench-pass-phrase\\r\\n");
    expect_named(world, "configuration", "[WIFI]ERROR:Module not inserted.");
}

TEST(Named, quotes_around_the_interface) {
    const World world = with_only("device_type=USB\\nwifidev=/sys/class/net\\n"
                                  "interface_name=\\\"wlan0\\\"\\nctrl_iface=/tmp/wpa_supplicant\\n"
                                  "go_ssid=bench-ap\\ngo_passphrase=bench-pass-phrase\\n");
    expect_named(world, "configuration", "[WIFI]ERROR:WiFi driver is not insmoded properly");
}

TEST(Named, line_that_is_too_long) {
    expect_named(with_file("device_name=" + std::string(600, 'x') + "\\n"), "configuration",
                 "line is longer than 511 characters, the rest is skipped");
}

TEST(Named, empty_name_of_the_access_point) {
    expect_named(with("config go_ssid="), "configuration", "is not found!!!");
}

// ---- module, driver -----------------------------------------------------------------------------

TEST(Named, list_that_this_kernel_does_not_have) {
    expect_named(with("folder /proc/bus/usb missing"), "module",
                 "[WIFI]ERROR:Module not inserted.");
}

TEST(Named, interface_of_another_name) {
    expect_named(with("config interface_name=wlan7"), "driver",
                 "[WIFI]ERROR:WiFi driver is not insmoded properly");
}

// ---- supplicant ---------------------------------------------------------------------------------

TEST(Named, socket_folder_of_another_name) {
    const World world =
        with_only("device_type=USB\\nwifidev=/sys/class/net\\n"
                  "interface_name=wlan0\\nctrl_iface=/var/run/elsewhere\\ngo_ssid=bench-ap\\n"
                  "go_passphrase=bench-pass-phrase\\n");
    expect_named(world, "supplicant", "[WIFI]Unable to open sockets!!");
}

TEST(Named, tmp_that_takes_no_socket) {
    World world = with("folder /tmp read-only");
    world.options.emplace_back("-R/root/result");
    expect_named(world, "supplicant", "[WIFI]Unable to open sockets!!");
}

TEST(Named, supplicant_without_wifi_direct) {
    World world = with("supplicant answers \"STATUS\" with \"wpa_state=INACTIVE\\n\"\n"
                       "supplicant answers \"P2P_FIND\" with \"UNKNOWN COMMAND\\n\"",
                       {"-d"});
    expect_named(world, "supplicant", "Failed to send P2P_FIND command to wpa_supplicant");
}

// ---- programs -----------------------------------------------------------------------------------

TEST(Named, missing_dhcp_client) {
    expect_named(with("program udhcpc missing"), "programs", "Fail to run dhclient!!!");
}

TEST(Named, missing_killall_that_wedges_the_run) {
    expect_named(with("program killall missing\nprogram udhcpc runs \"exit 0\""), "programs",
                 "killall: not found");
}

TEST(Named, missing_iperf) {
    expect_named(with(std::string(bench_test::quick_address) +
                      "\nprogram iperf missing\nconfig check_iperf=yes"),
                 "programs", "iperf: not found");
}

TEST(Named, iperf_folder_without_its_slash) {
    expect_named(with(std::string(bench_test::quick_address) +
                      "\nconfig check_iperf=yes\nconfig iperf_path=/usr/bin"),
                 "programs", "/usr/biniperf: not found");
}

TEST(Named, iperf_of_version_3) {
    expect_named(
        with(std::string(bench_test::quick_address) +
             "\nconfig check_iperf=yes\nprogram iperf runs \"case $1 in -v) echo iperf 3.12 ;; "
             "*) echo iperf3: error - unable to connect ;; esac\""),
        "programs", "iperf3: error");
}

// ---- files --------------------------------------------------------------------------------------

TEST(Named, result_file_in_a_folder_that_is_not_there) {
    World world = with("");
    world.options.emplace_back("-R/tmp/none/result");
    expect_named(world, "files", "[WIFI]Unable to open Result File: ");
}

TEST(Named, result_file_without_room) {
    expect_named(with("folder /root full"), "files", "[WIFI]Unable to write Result File: ");
}

TEST(Named, listing_that_is_a_link) {
    expect_named(with("air takes 20ms\nfile /tmp/output links /tmp/elsewhere", {"-S"}), "files",
                 "File open error");
}

TEST(Named, status_file_in_a_read_only_folder) {
    World world = with("air takes 20ms\nfolder /mnt/status read-only", {"-S"});
    world.options.emplace_back("-D/proc/none/status");
    expect_named(world, "files", "[WIFI]not able to open file");
}

TEST(Named, softap_verdict_that_is_inverted) {
    const World world = with("", {"-A"});
    const Diagnosis diagnosis = diagnose(world);
    EXPECT_EQ(diagnosis.status, 1);
    EXPECT_THAT(diagnosis.bad(),
                Contains(Field(&Remark::run_prints, "[WIFI]ERROR:create softAP problem")));
    EXPECT_THAT(run_console(world), HasSubstr("[WIFI]ERROR:create softAP problem"));
}

// ---- air ----------------------------------------------------------------------------------------

TEST(Named, access_point_that_is_not_heard) {
    World world = with("");
    world.scenario = "access-point-absent";
    const Diagnosis diagnosis = diagnose(world, {"--scan"});
    EXPECT_EQ(diagnosis.status, 1);
    EXPECT_THAT(diagnosis.bad(),
                Contains(AllOf(Field(&Remark::point, "air"),
                               Field(&Remark::run_prints, "bench-apis not found!!!"))));
    // The name is printed without a blank behind it: kept.
    EXPECT_THAT(run_console(world), HasSubstr("bench-apis not found!!!"));
}

TEST(Named, supplicant_that_refuses_to_scan) {
    World world = with("");
    world.scenario = "scan-refused";
    const Diagnosis diagnosis = diagnose(world, {"--scan"});
    EXPECT_THAT(diagnosis.bad(), Contains(Field(&Remark::run_prints, "ERROR:SCAN-FAIL")));
    EXPECT_THAT(run_console(world), HasSubstr("ERROR:SCAN-FAIL"));
}

// ---- the doctor itself --------------------------------------------------------------------------

TEST(Doctor, hears_the_access_point_of_a_good_device) {
    const Diagnosis diagnosis = diagnose(with(""), {"--scan"});
    EXPECT_EQ(diagnosis.status, 0) << diagnosis.text;
    EXPECT_THAT(
        diagnosis.text,
        HasSubstr("\\\"bench-ap\\\" is 02:00:00:00:01:00, -38 dBm, channel 1, [WPA2-PSK-CCMP]"));
}

TEST(Doctor, sends_the_supplicant_nothing_that_changes_it) {
    const bench_test::BenchRun run =
        bench_test::Bench().option("--tool", DOCTOR_PROGRAM).args({"-d"}).run();
    EXPECT_EQ(run.status, 0) << run.out;
    EXPECT_THAT(run.commands(), testing::ElementsAre("STATUS", "GET version", "GET country",
                                                     "GET p2p_no_group_iface"));
    EXPECT_THAT(run.sockets(), IsEmpty());
}

TEST(Doctor, leaves_no_file_behind) {
    const bench_test::BenchRun looked =
        bench_test::Bench().option("--tool", DOCTOR_PROGRAM).args({"-lMS"}).run();
    EXPECT_THAT(looked.files, Not(Contains(testing::Key("root/WIFIResult"))));
    EXPECT_THAT(looked.files, Not(Contains(testing::Key("tmp/output"))));
    EXPECT_THAT(looked.files, Not(Contains(testing::Key("tmp/ap_status.txt"))));
}

TEST(Doctor, stands_still_at_no_file_that_blocks) {
    for (const char* path : {"/lib/modules/wifi/wivex.cfg", "/proc/bus/usb/devices",
                             "/root/WIFIResult", "/tmp/ap_status.txt", "/tmp/output"}) {
        const bench_test::BenchRun run = bench_test::Bench()
                                             .line(std::string("file ") + path + " blocks")
                                             .option("--tool", DOCTOR_PROGRAM)
                                             .at_most(std::chrono::seconds(20))
                                             .args({"-S"})
                                             .run();
        EXPECT_FALSE(run.timed_out) << path;
        EXPECT_EQ(run.status, 1) << path << run.out;
    }
}

} // namespace
} // namespace doctor_test
