// SPDX-License-Identifier: Apache-2.0
// The register files of ath6kl in a debugfs of the test's own.

#include "children.hpp"
#include "console_capture.hpp"
#include "diag/register_files.hpp"
#include "fake_supplicant.hpp"
#include "host_programs.hpp"
#include "process_fixture.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

const std::string phys = "/sys/kernel/debug/ieee80211";

class RegisterFiles : public ProcessFixture {
protected:
    static void SetUpTestSuite() {
        use_private_tmp();
    }

    void SetUp() override {
        ProcessFixture::SetUp();
        if (with_debugfs([] { return 0; }) == no_own_folder) {
            GTEST_SKIP() << "no mount namespaces";
        }
    }

    /// Runs `body` where debugfs shows nothing, and returns its end.
    static int with_debugfs(const std::function<int()>& body) {
        return with_empty_folder("/sys/kernel", [&body] {
            std::filesystem::create_directories("/sys/kernel/debug");
            return body();
        });
    }

    /// The phy that is found where debugfs shows these.
    static int find_among(const std::vector<std::string>& names, const std::string& expected) {
        return with_debugfs([&] {
            for (const std::string& name : names) {
                std::filesystem::create_directories(phys + "/" + name);
            }
            PhyName found{};
            const bool is_found = find_phy_name(found);
            return is_found == !expected.empty() && expected == found.data() ? 0 : 1;
        });
    }
};

TEST_F(RegisterFiles, belong_to_a_directory_with_phy_anywhere_in_its_name) {
    EXPECT_EQ(find_among({"phy7"}, "phy7"), 0);
    EXPECT_EQ(find_among({"my-phy0"}, "my-phy0"), 0);
    EXPECT_EQ(find_among({"ph0", "hy0", "PHY0", "p-h-y"}, ""), 0);
}

TEST_F(RegisterFiles, are_not_found_where_the_directory_cannot_be_read) {
    const int status = with_debugfs([] {
        // The network of a process that has ended, but was not waited for.
        const int ended = fork_child([] { return 0; });
        siginfo_t end{};
        ::waitid(P_PID, static_cast<id_t>(ended), &end, WEXITED | WNOWAIT);
        std::filesystem::create_symlink("/proc/" + std::to_string(ended) + "/net", phys);
        PhyName phy{};
        return find_phy_name(phy) ? 1 : 0;
    });
    EXPECT_EQ(status, 0);
    EXPECT_THAT(console_.err(), StartsWith("readdir_r: "));
    EXPECT_EQ(console_.out(), "");
}

/// The files of a phy whose register always reads as `dump`.
void provide_register_files(const std::string& dump) {
    std::filesystem::create_directories(phys + "/phy0/ath6kl");
    std::ofstream(phys + "/phy0/ath6kl/reg_addr") << "";
    std::ofstream(phys + "/phy0/ath6kl/reg_dump") << dump;
}

TEST_F(RegisterFiles, give_the_address_of_the_firmware) {
    const int status = with_debugfs([] {
        provide_register_files("0x28000: 0x33221100\n");
        std::string mac;
        return read_fw_mac_ath6kl(mac) == 1 && mac == "00:11:22:33:00:11" ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
}

TEST_F(RegisterFiles, are_not_read_when_the_shell_that_examines_them_is_hung_up) {
    const HostPrograms programs;
    programs.provide("stat", "kill -HUP $PPID; sleep 1");
    const int status = with_debugfs([] {
        ::signal(SIGHUP, SIG_DFL);
        provide_register_files("0x28000: 0x33221100\n");
        std::string mac;
        return read_fw_mac_ath6kl(mac) == 0 && mac.empty() ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(console_.out(),
              "[WIFI]phy_addr is [phy0]\n"
              "[WIFI]buf is stat /sys/kernel/debug/ieee80211/phy0/ath6kl/reg_addr\n"
              "[WIFI]Call to system(stat /sys/kernel/debug/ieee80211/phy0/ath6kl/reg_addr) is not "
              "successful...\n");
}

} // namespace
} // namespace wivex
