// SPDX-License-Identifier: Apache-2.0
#include "program/identity_options.hpp"

#include "common/printable.hpp"
#include "program/device_facts.hpp"
#include "program/identity_text.hpp"
#include "program/previous_report.hpp"

#include <unistd.h>

#include <array>

namespace wivex::report {

namespace {

// What the options of the command line say.
std::string read_told(const IdentityOptions& options, Identity& told) {
    struct Member {
        const char* key;
        const std::optional<std::string>* value;
    };
    const auto members = std::to_array<Member>({{"serial", &options.serial},
                                                {"part", &options.part},
                                                {"station", &options.station},
                                                {"attempt", &options.attempt},
                                                {"operator", &options.operator_name}});
    std::string problem;
    for (const Member& member : members) {
        if (problem.empty() && *member.value) {
            problem = set_member(told, member.key, **member.value);
        }
    }
    for (const std::string& fact : options.facts) {
        if (problem.empty()) {
            problem = set_member(told, "fact", fact);
        }
    }
    return problem;
}

std::string host_name() {
    std::array<char, 256> name{};
    return gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

} // namespace

void declare_identity(CLI::App& app, IdentityOptions& options) {
    app.add_option("--serial", options.serial, "Serial number of the unit that is tested.")
        ->type_name("S");
    app.add_option("--part", options.part, "Part number or model of the unit.")->type_name("P");
    app.add_option("--station", options.station,
                   "Station where it is tested; without it, the name of this host.")
        ->type_name("NAME");
    app.add_option("--attempt", options.attempt, "The how many-th test of this unit, from 1.")
        ->type_name("N");
    app.add_option("--operator", options.operator_name, "Who tests.")->type_name("O");
    app.add_option("--fact", options.facts, "Anything else worth keeping; may be repeated.")
        ->type_name("KEY=VALUE")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
    app.add_option("--identity", options.file,
                   "Read the same from FILE, in lines key=value; the command line beats it.")
        ->type_name("FILE");
    app.add_flag("--on-device", options.on_device,
                 "This machine is the device: ask it for model, serial number, kernel, driver, "
                 "firmware, regulatory domain and MAC address.");
    app.add_option("--interface", options.interface, "Its Wi-Fi interface, for --on-device.")
        ->type_name("NAME")
        ->capture_default_str();
}

std::string settle_identity(const IdentityOptions& options, const std::string& out,
                            Identity& identity) {
    Identity in_file;
    Identity told;
    std::string problem = read_told(options, told);
    if (problem.empty() && !options.file.empty()) {
        problem = read_identity_file(options.file, in_file);
    }
    if (problem.empty() && options.on_device && !is_interface_name(options.interface)) {
        problem = "no name of an interface: " + printable(options.interface, 40);
    }
    if (!problem.empty()) {
        return problem;
    }
    Identity known;
    // A name that cannot be shown is none.
    static_cast<void>(set_member(known, "station", host_name()));
    if (options.on_device) {
        known = overlaid(known, device_facts(options.interface));
    }
    identity = overlaid(overlaid(known, in_file), told);
    if (!out.empty()) {
        read_previous_report(out, identity);
    }
    return {};
}

} // namespace wivex::report
