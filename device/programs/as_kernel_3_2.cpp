// SPDX-License-Identifier: Apache-2.0
// as-kernel-3-2 COMMAND...: run a command that finds no system call younger than Linux 3.2: each
// fails as on a kernel that does not know it. For 32-bit ARM; elsewhere it says so and ends with
// status 1.
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace {

#ifdef __arm__
// process_vm_writev was the last call of Linux 3.2; the machine's own calls begin far above.
constexpr std::uint32_t last_call = 377;
constexpr std::uint32_t first_call_of_machine = 0x0f0000;

bool hide_younger_calls() {
    std::array<sock_filter, 5> program{{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JGT | BPF_K, last_call, 0, 2),
        BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, first_call_of_machine, 1, 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    const sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

// A call of Linux 3.17.
bool younger_calls_are_hidden() {
    std::array<char, 1> byte{};
    return syscall(SYS_getrandom, byte.data(), byte.size(), 0) < 0 && errno == ENOSYS;
}
#else
bool younger_calls_are_hidden() {
    return false;
}

bool hide_younger_calls() {
    errno = ENOTSUP;
    return false;
}
#endif

} // namespace

int main(int argc, char* argv[]) {
    if (argc < 2) {
        std::fputs("usage: as-kernel-3-2 COMMAND...\n", stderr);
        return 2;
    }
    if (!hide_younger_calls() || !younger_calls_are_hidden()) {
        std::perror("as-kernel-3-2");
        return 1;
    }
    execvp(argv[1], argv + 1);
    std::perror(argv[1]);
    return 127;
}
