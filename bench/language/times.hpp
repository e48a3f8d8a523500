// SPDX-License-Identifier: Apache-2.0
// Which times something comes, as a scenario counts them.
#pragma once

namespace bench {

/// Which times a command comes: from `first` to `last`, counted from 1.
struct Times {
    int first = 1;
    int last = 1'000'000'000;

    bool contain(int count) const {
        return count >= first && count <= last;
    }
};

} // namespace bench
