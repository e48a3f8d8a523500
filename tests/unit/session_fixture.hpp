// SPDX-License-Identifier: Apache-2.0
// An open session with a fake supplicant at its other end, for whatever works on a session.
#pragma once

#include "common/process_state.hpp"
#include "common/run_config.hpp"
#include "console_capture.hpp"
#include "ctrl/supplicant_session.hpp"
#include "fake_supplicant.hpp"
#include "scratch.hpp"

#include <gtest/gtest.h>

#include <optional>

namespace wivex::test_support {

class SessionFixture : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        use_private_tmp();
    }

    void SetUp() override {
        reset_process_state();
        config_.ctrl_iface = directory_.path();
        config_.interface_name = "wlan0";
        session_.emplace(config_);
        ASSERT_FALSE(session_->isInvalid());
        console_.out();
    }

    void TearDown() override {
        session_.reset();
        reset_process_state();
    }

    ScratchDirectory directory_;
    ConsoleCapture console_;
    FakeSupplicant supplicant_{directory_ / "wlan0"};
    RunConfig config_;
    std::optional<SupplicantSession> session_;
};

} // namespace wivex::test_support
