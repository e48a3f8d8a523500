// SPDX-License-Identifier: Apache-2.0
// count-instructions FILE COMMAND...: run a command and write to FILE how many instructions it has
// executed, two numbers: in its own code and, a blank behind it, in the kernel. Children of the
// command are not counted. An interrupt is counted for whatever it breaks into. The processor must
// have counters that its kernel knows.
//
// Exit status: that of the command, 128 and its signal when one has ended it, or 125 when it was
// not counted; then there is no FILE.
#include <fcntl.h>
#include <linux/perf_event.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <optional>

namespace {

constexpr int not_counted = 125;
constexpr int not_started = 127;

enum class Side { command, kernel };

// A counter of the process from its exec on; negative when there is none.
int open_counter(pid_t process, Side side) {
    perf_event_attr wanted{};
    wanted.type = PERF_TYPE_HARDWARE;
    wanted.size = sizeof(wanted);
    wanted.config = PERF_COUNT_HW_INSTRUCTIONS;
    wanted.read_format = PERF_FORMAT_TOTAL_TIME_ENABLED | PERF_FORMAT_TOTAL_TIME_RUNNING;
    wanted.disabled = 1;
    wanted.enable_on_exec = 1;
    wanted.exclude_hv = 1;
    wanted.exclude_user = side == Side::kernel ? 1 : 0;
    wanted.exclude_kernel = side == Side::command ? 1 : 0;
    return static_cast<int>(
        syscall(SYS_perf_event_open, &wanted, process, -1, -1, PERF_FLAG_FD_CLOEXEC));
}

// Nothing when the counter did not run all of the time.
std::optional<std::uint64_t> read_counter(int counter) {
    struct {
        std::uint64_t count;
        std::uint64_t enabled;
        std::uint64_t running;
    } state{};
    if (read(counter, &state, sizeof(state)) != sizeof(state) || state.running == 0 ||
        state.running != state.enabled) {
        return std::nullopt;
    }
    return state.count;
}

// The command in a process that waits until the other end of the pipe says that it is counted.
pid_t start_held(char** command, const std::array<int, 2>& gate) {
    const pid_t process = fork();
    if (process != 0) {
        return process;
    }
    char opened = 0;
    close(gate[1]);
    if (read(gate[0], &opened, 1) == 1) {
        execvp(command[0], command);
        std::perror(command[0]);
    }
    _exit(not_started);
}

int status_of(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

bool write_counts(const char* path, std::uint64_t command, std::uint64_t kernel) {
    FILE* const file = std::fopen(path, "we");
    if (file == nullptr) {
        return false;
    }
    const bool printed = std::fprintf(file, "%" PRIu64 " %" PRIu64 "\n", command, kernel) > 0;
    return std::fclose(file) == 0 && printed;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs("usage: count-instructions FILE COMMAND...\n", stderr);
        return not_counted;
    }
    unlink(argv[1]);
    std::array<int, 2> gate{};
    if (pipe2(gate.data(), O_CLOEXEC) != 0) {
        std::perror("count-instructions");
        return not_counted;
    }
    const pid_t process = start_held(argv + 2, gate);
    const int command = open_counter(process, Side::command);
    const int kernel = open_counter(process, Side::kernel);
    // What ends the command must not end the one who counts.
    signal(SIGINT, SIG_IGN);
    signal(SIGTERM, SIG_IGN);
    if (process < 0 || command < 0 || kernel < 0) {
        std::perror("count-instructions");
        return not_counted;
    }
    if (write(gate[1], "1", 1) != 1) {
        return not_counted;
    }
    const int status = status_of(process);
    const auto own = read_counter(command);
    const auto in_kernel = read_counter(kernel);
    if (!own || !in_kernel || !write_counts(argv[1], *own, *in_kernel)) {
        std::fputs("count-instructions: not counted\n", stderr);
        return not_counted;
    }
    return status;
}
