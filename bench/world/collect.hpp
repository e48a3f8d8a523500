// SPDX-License-Identifier: Apache-2.0
// What is left behind of a run: files, usage, and names of sockets.
#pragma once

#include <sys/resource.h>

namespace bench {

struct Ended {
    int status = 0;
    rusage usage{};
};

class Stopwatch {
public:
    Stopwatch();
    /// Milliseconds since it was made.
    double elapsed_ms() const;

private:
    double start_;
};

/// Copies the files of the world's /root and /tmp to the folders "root" and "tmp" below `out_fd`,
/// lists in "sockets" what control sockets stand in /tmp, and writes "usage".
void collect(int out_fd, const Ended& ended, const Stopwatch& watch);

} // namespace bench
