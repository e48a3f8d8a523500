// SPDX-License-Identifier: Apache-2.0
// A clock that passes only while the tool waits: how long it waits is told to the second, and costs
// a test no time.
#pragma once

#include "fake_supplicant.hpp"
#include "odd_calls.hpp"

#include <ctime>
#include <string>
#include <vector>

namespace wivex::test_support {

/// Thrown out of a wait that has no end.
struct EndlessWait {};

/// While it lives, sleeping takes no time, and a wait for the next event of `supplicant` takes a
/// second of this clock when the supplicant has said all that it will say. Answers to commands are
/// waited for as ever. A wait of 1000 seconds throws `EndlessWait`.
class MadeUpClock {
public:
    explicit MadeUpClock(const FakeSupplicant* supplicant = nullptr);

    /// What the tool did so far: "sleeps 2 s", or "waits 30 s" for events that did not come.
    std::vector<std::string> story() const;

private:
    bool passes_a_second(pollfd& descriptor) const;
    void tell(const char* verb, std::time_t seconds);

    struct Step {
        const char* verb;
        std::time_t seconds;
    };

    const FakeSupplicant* supplicant_;
    std::time_t now_ = 1'000'000'000;
    std::vector<Step> steps_;
    OddCalls calls_;
};

} // namespace wivex::test_support
