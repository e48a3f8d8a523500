// SPDX-License-Identifier: Apache-2.0
// A pipe whose ends close themselves.
#pragma once

#include "common/unique_fd.hpp"

namespace wivex::test_support {

class Pipe {
public:
    Pipe();

    int reader() const {
        return reader_.get();
    }
    int writer() const {
        return writer_.get();
    }
    void close_writer() {
        writer_.reset();
    }

    /// Writes one byte.
    void write() const;

    /// Waits for one byte and takes it.
    void read() const;

private:
    UniqueFd reader_;
    UniqueFd writer_;
};

} // namespace wivex::test_support
