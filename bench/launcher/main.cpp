// SPDX-License-Identifier: Apache-2.0
// wivex-bench: runs the unchanged tool in a private world, against simulated and real counterparts.

#include "language/conventions.hpp"
#include "language/files.hpp"
#include "language/scenario.hpp"
#include "launcher/device.hpp"
#include "launcher/options.hpp"
#include "world/access_point.hpp"
#include "world/configuration.hpp"
#include "world/forwarding.hpp"
#include "world/gate.hpp"
#include "world/interfaces.hpp"
#include "world/namespaces.hpp"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

namespace bench {

namespace {

int fail(const std::string& problem) {
    std::fprintf(stderr, "wivex-bench: %s\n", problem.c_str());
    return bench_failure;
}

std::string beside_launcher(const char* name) {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / name;
}

std::optional<Scenario> read_scenario(const std::string& path, std::string& problem) {
    if (path.empty()) {
        return Scenario{};
    }
    const auto text = read_file(path);
    if (!text) {
        problem = "cannot read " + path;
        return std::nullopt;
    }
    return parse_scenario(*text, path, problem);
}

std::optional<Configuration> make_configuration(const Options& options, const Scenario& scenario,
                                                std::string& problem) {
    Configuration configuration = usual_configuration();
    apply(scenario, configuration);
    if (!options.config.empty()) {
        const auto text = read_file(options.config);
        if (!text) {
            problem = "cannot read " + options.config;
            return std::nullopt;
        }
        take_values(*text, configuration);
    }
    for (const std::string& setting : options.settings) {
        take_values(setting, configuration);
    }
    return configuration;
}

bool wants_traffic(const Configuration& configuration) {
    const auto value = configuration.find("check_iperf");
    return value != configuration.end() && !value->second.empty() && value->second != "no";
}

int open_out_folder(const std::string& path) {
    if (path.empty()) {
        return -1;
    }
    std::error_code ignored;
    std::filesystem::create_directories(path, ignored);
    return open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

int wait_for_device(pid_t device) {
    int status = 0;
    while (waitpid(device, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : bench_failure;
}

int run_worlds(const Options& options, const Scenario& scenario,
               const Configuration& configuration) {
    const int out_fd = open_out_folder(options.out);
    if (!options.out.empty() && out_fd < 0) {
        return fail("cannot use the folder " + options.out);
    }
    Gate network_of_device;
    Gate network_of_access_point;
    Gate services;
    const Device device{options, scenario, configuration, out_fd};
    const pid_t device_process =
        start_world([&] { return run_device(device, network_of_device, services); });
    forward_sigterm_to(device_process);
    const AccessPointServices wanted{scenario.dhcp_server,
                                     scenario.iperf_server && wants_traffic(configuration)};
    const pid_t access_point =
        start_world([&] { return run_access_point(wanted, network_of_access_point, services); });
    if (device_process < 0 || access_point < 0) {
        return fail("the kernel gives no namespaces; run as root");
    }
    if (scenario.interface != InterfaceState::absent &&
        !connect_worlds(device_process, access_point)) {
        return fail("cannot create the virtual Ethernet");
    }
    network_of_device.open();
    network_of_access_point.open();
    return wait_for_device(device_process);
}

int run(int argc, char* argv[]) {
    Options options;
    if (!parse_options(argc, argv, options)) {
        return bench_failure;
    }
    if (options.tool.empty()) {
        options.tool = beside_launcher("../wivex");
    }
    std::error_code missing;
    options.tool = std::filesystem::canonical(options.tool, missing);
    if (missing) {
        return fail("no tool there; build it or name it with --tool");
    }
    std::string problem;
    const auto scenario = read_scenario(options.scenario, problem);
    if (!scenario) {
        return fail(problem);
    }
    if (scenario->air.spoken) {
        options.start.preloads.push_back(beside_launcher("libbench_air.so"));
    }
    if (!scenario->driver.empty()) {
        options.start.preloads.push_back(
            options.driver.empty() ? beside_launcher("libbench_driver.so") : options.driver);
    }
    const auto configuration = make_configuration(options, *scenario, problem);
    if (!configuration) {
        return fail(problem);
    }
    if (!become_root(problem)) {
        return fail(problem);
    }
    // An interrupt from the keyboard is the tool's.
    signal(SIGINT, SIG_IGN);
    forward_sigterm_to(-1);
    return run_worlds(options, *scenario, *configuration);
}

} // namespace

} // namespace bench

int main(int argc, char* argv[]) {
    try {
        return bench::run(argc, argv);
    } catch (const std::exception& failure) {
        return bench::fail(failure.what());
    }
}
