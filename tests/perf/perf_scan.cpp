// SPDX-License-Identifier: Apache-2.0
// A scan's dump with its listing, against a bare dump of the library that only counts. To be
// started by the bench in place of the tool, on a scenario with a full table of access points.

#include "diag/access_points.hpp"
#include "diag/netlink.hpp"
#include "diag/nl80211.hpp"
#include "diag/nl80211_scan.hpp"
#include "measure.hpp"

#include <dlfcn.h>
#include <fcntl.h>
#include <net/if.h>
#include <netlink/genl/ctrl.h>
#include <netlink/genl/genl.h>
#include <netlink/msg.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <vector>

namespace {

constexpr int samples = 200;

double last_request = 0;

} // namespace

// The simulated kernel makes its answer while the request is sent; both figures hold its time.
extern "C" ssize_t sendmsg(int fd, const msghdr* message, int flags) {
    using Send = ssize_t (*)(int, const msghdr*, int);
    static const auto next = reinterpret_cast<Send>(dlsym(RTLD_NEXT, "sendmsg"));
    last_request = perf::now();
    return next(fd, message, flags);
}

namespace {

/// Sends standard output nowhere as long as it lives: the tool's own lines are no figures.
class QuietOutput {
public:
    QuietOutput() : kept_(dup(STDOUT_FILENO)) {
        const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
        dup2(nowhere, STDOUT_FILENO);
        close(nowhere);
    }
    ~QuietOutput() {
        dup2(kept_, STDOUT_FILENO);
        close(kept_);
    }
    QuietOutput(const QuietOutput&) = delete;
    QuietOutput& operator=(const QuietOutput&) = delete;

private:
    int kept_;
};

int count_bss(nl_msg* /*message*/, void* count) {
    ++*static_cast<int*>(count);
    return NL_SKIP;
}

bool scan_with_tool() {
    wivex::scan_table() = wivex::ScanTable();
    return wivex::execute_scan_nl_command() == 0 && wivex::scan_table().full();
}

bool dump_with_library() {
    const wivex::NetlinkSocket socket(nl_socket_alloc());
    genl_connect(socket.get());
    const int family = genl_ctrl_resolve(socket.get(), "nl80211");
    const wivex::NetlinkMessage message(nlmsg_alloc());
    wivex::make_scan_dump(message.get(), family, if_nametoindex("wlan0"));
    int count = 0;
    nl_socket_modify_cb(socket.get(), NL_CB_VALID, NL_CB_CUSTOM, count_bss, &count);
    nl_send_auto_complete(socket.get(), message.get());
    nl_recvmsgs_default(socket.get());
    return count == 300;
}

/// From the request of the dump until everything is closed; -1 when it did not bring all.
double microseconds(bool (*dump)()) {
    const bool complete = dump();
    return complete ? (perf::now() - last_request) * 1e6 : -1;
}

} // namespace

int main() {
    std::vector<double> tool;
    std::vector<double> library;
    {
        const QuietOutput quiet;
        for (int sample = 0; sample < samples; ++sample) {
            tool.push_back(microseconds(scan_with_tool));
            library.push_back(microseconds(dump_with_library));
        }
    }
    if (perf::quantile(tool, 0) < 0 || perf::quantile(library, 0) < 0) {
        std::puts("the dump did not bring 300 access points");
        return 1;
    }
    perf::print_against_floor("dump and listing of 300 BSSs", "us", perf::quantile(tool, 0.5),
                              perf::quantile(library, 0.5), 1.5);
    return 0;
}
