// SPDX-License-Identifier: Apache-2.0
#include "truth.hpp"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace doctor_test {

namespace {

bench_test::Bench bench_of(const World& world) {
    bench_test::Bench bench(world.scenario);
    bench.line(world.lines);
    if (world.speed > 1) {
        bench.faster(world.speed);
    }
    return bench;
}

// What a run says when it failed for whatever cause: then a point must have been named, or unknown.
const std::vector<std::string> verdicts{"[WIFI]MAC PRINT FAIL", "[WIFI]### LOOPBACK FAIL ###",
                                        "[WIFI]SCAN FAIL", "err ReadTargetRange failed"};

bool contains(const std::string& whole, const std::string& part) {
    return whole.find(part) != std::string::npos;
}

} // namespace

std::vector<Remark> Diagnosis::bad() const {
    std::vector<Remark> found;
    std::copy_if(remarks.begin(), remarks.end(), std::back_inserter(found),
                 [](const Remark& remark) { return remark.state == "bad"; });
    return found;
}

bool Diagnosis::knows_all() const {
    return std::none_of(remarks.begin(), remarks.end(),
                        [](const Remark& remark) { return remark.state == "not known"; });
}

Diagnosis diagnose(const World& world, const std::vector<std::string>& own_options) {
    std::vector<std::string> options = world.options;
    options.emplace_back("--json");
    options.insert(options.end(), own_options.begin(), own_options.end());
    const bench_test::BenchRun run =
        bench_of(world).option("--tool", DOCTOR_PROGRAM).args(options).run();
    Diagnosis diagnosis;
    diagnosis.status = run.status;
    diagnosis.text = run.out + run.err;
    const auto report = nlohmann::json::parse(run.out, nullptr, false);
    if (report.is_discarded()) {
        return diagnosis;
    }
    diagnosis.ready = report["ready"];
    for (const auto& point : report["points"]) {
        diagnosis.points.push_back(point["point"]);
        for (const auto& remark : point["remarks"]) {
            diagnosis.remarks.push_back({point["point"], remark["state"], remark["found"],
                                         remark["run_prints"], remark["mend"]});
        }
    }
    return diagnosis;
}

std::string run_console(const World& world) {
    const bench_test::BenchRun run =
        bench_of(world).signal("INT@" + world.interrupt_at).args(world.options).run();
    return run.out + run.err;
}

const std::vector<std::string>& visible_texts() {
    static const std::vector<std::string> texts{
        "[WIFI]Configuration file problem.Plese check",
        "[WIFI]Unknown key value pair..",
        "line is longer than 511 characters",
        "[WIFI]ERROR:Module not inserted.",
        "[WIFI]ERROR:WiFi driver is not insmoded properly",
        "[WIFI]ERROR:WiFi network interface not up",
        "[WIFI]ERROR:create softAP problem",
        "[WIFI][401]IOCTL fail",
        "[WIFI]LOOPBACK is not supported for this chip",
        "[WIFI]Both addresses are not same...",
        "[WIFI]No private ioctl is for wlan0 interface...",
        "[WIFI]Not Able to find ioctl command",
        "err firmware_mac_address_qca_combo failed",
        "phy_addr is NULL",
        "Debugfs Mount Error",
        "[WIFI]Can not write to reg_addr",
        "[WIFI]Can not read reg_dump",
        "[WIFI]do_scan_trigger() failed with",
        "File open error",
        "File write error",
        "[WIFI]not able to open file",
        "[WIFI]Unable to open sockets!!",
        "[WIFI]Unable to attach event socket!!",
        "error in config file: missing target mac address",
        "P2P FIND: TIME OUT !!",
        "Failed to send P2P_FIND command to wpa_supplicant",
        "connect:TEST CASE FAIL",
        "unable to start p2p group",
        "is not found!!!",
        "SET_NETWORK Command for psk is not successful",
        "SET_NETWORK Command for proto is not successful",
        "ERROR:SCAN-FAIL",
        "Unable to Connect Time out!!!",
        "Fail to run dhclient!!!",
        "ifconfig: not found",
        "killall: not found",
        "udhcpd: not found",
        "iperf: not found",
        "[WIFI]Unable to open Result File: ",
        "[WIFI]Unable to write Result File: ",
    };
    return texts;
}

std::vector<std::string> lies(const Diagnosis& diagnosis, const std::string& console,
                              const std::vector<std::string>& begins_later) {
    std::vector<std::string> found;
    for (const Remark& remark : diagnosis.bad()) {
        if (!contains(console, remark.run_prints)) {
            found.push_back("named and did not come: " + remark.run_prints + " (" + remark.found +
                            ")");
        }
    }
    for (const std::string& text : visible_texts()) {
        if (!contains(console, text)) {
            continue;
        }
        const bool named = std::any_of(
            diagnosis.remarks.begin(), diagnosis.remarks.end(), [&text](const Remark& remark) {
                return remark.state != "note" &&
                       (contains(remark.run_prints, text) || contains(text, remark.run_prints));
            });
        const bool later =
            std::find(begins_later.begin(), begins_later.end(), text) != begins_later.end();
        if (!named && !later) {
            found.push_back("came and was not named: " + text);
        }
    }
    for (const std::string& text : verdicts) {
        const bool later =
            std::find(begins_later.begin(), begins_later.end(), text) != begins_later.end();
        if (contains(console, text) && diagnosis.ready && !later) {
            found.push_back("ready, and the run failed: " + text);
        }
    }
    return found;
}

} // namespace doctor_test
