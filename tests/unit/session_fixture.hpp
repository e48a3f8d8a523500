// SPDX-License-Identifier: Apache-2.0
// A session with a fake supplicant at its other end, for whatever works on a session.
#pragma once

#include "ctrl/supplicant_session.hpp"
#include "made_up_clock.hpp"
#include "process_fixture.hpp"

#include <optional>

namespace wivex::test_support {

/// A supplicant, and no session with it yet.
class SupplicantFixture : public ControlSocketFixture {
protected:
    FakeSupplicant supplicant_{control_path()};
};

/// An open session; the second behind its opening takes no time.
class SessionFixture : public SupplicantFixture {
protected:
    void SetUp() override {
        SupplicantFixture::SetUp();
        {
            const MadeUpClock clock;
            session_.emplace(config_);
        }
        ASSERT_FALSE(session_->isInvalid());
        console_.out();
    }

    void TearDown() override {
        session_.reset();
        SupplicantFixture::TearDown();
    }

    std::optional<SupplicantSession> session_;
};

} // namespace wivex::test_support
