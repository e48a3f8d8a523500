// SPDX-License-Identifier: Apache-2.0
// A gate between two processes: one waits until the other opens it.
#pragma once

namespace bench {

class Gate {
public:
    Gate();
    ~Gate();
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;

    void open() const;

    /// Waits until some process has opened the gate; false when none is left that could.
    bool wait();

private:
    int read_end_ = -1;
    int write_end_ = -1;
};

} // namespace bench
