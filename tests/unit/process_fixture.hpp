// SPDX-License-Identifier: Apache-2.0
// What most tests stand on: the process-wide state of a program that has just started, a directory
// of its own, the caught console, a configuration. The search path is put back behind each test.
#pragma once

#include "common/process_state.hpp"
#include "common/run_config.hpp"
#include "console_capture.hpp"
#include "fake_supplicant.hpp"
#include "scratch.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace wivex::test_support {

/// What the closing of two connections prints in a run that is not being killed.
inline constexpr const char* closing_trace =
    "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 0 ...\n"
    "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 0 ...\n";

class ProcessFixture : public ::testing::Test {
protected:
    void SetUp() override {
        reset_process_state();
    }
    void TearDown() override {
        reset_process_state();
        ::setenv("PATH", search_path_.c_str(), 1);
    }

    ScratchDirectory directory_;
    ConsoleCapture console_;
    RunConfig config_;

private:
    const std::string search_path_ = ::getenv("PATH");
};

/// For what opens control sockets. The interface is none of the two whose status a session asks,
/// so that a test can put a supplicant of its own behind those.
class ControlSocketFixture : public ProcessFixture {
protected:
    static void SetUpTestSuite() {
        use_private_tmp();
    }

    void SetUp() override {
        ProcessFixture::SetUp();
        config_.ctrl_iface = directory_.path();
        config_.interface_name = "wlan5";
    }

    std::string control_path() const {
        return directory_ / "wlan5";
    }
};

} // namespace wivex::test_support
