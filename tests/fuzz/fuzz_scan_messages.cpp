// SPDX-License-Identifier: Apache-2.0
// The kernel's side of a scan: each part of the input, two bytes of length and then the bytes, is
// what one receive on the netlink socket yields. Length 0 is a note that messages were lost, length
// 65535 an error of the socket, which no dump survives. Behind the input the kernel ends in good
// order whatever is asked.

#include "diag/access_points.hpp"
#include "diag/nl80211_scan.hpp"
#include "memory_file.hpp"
#include "require.hpp"

#include <dlfcn.h>
#include <linux/genetlink.h>
#include <linux/nl80211.h>
#include <net/if.h>
#include <netlink/attr.h>
#include <netlink/genl/ctrl.h>
#include <netlink/genl/genl.h>
#include <netlink/netlink.h>
#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

using fuzz::require;
using Octets = std::vector<unsigned char>;

constexpr std::uint16_t family = 28;
constexpr std::size_t socket_error = 65535;
// The trigger is the first request, the dump the second.
constexpr std::uint32_t dump_sequence = 2;

std::string_view parts;
std::uint32_t sequence = 0;
unsigned answers_behind_input = 0;
bool dump_broke = false;

const fuzz::MemoryFile listing;
bool listing_opened = false;

template <typename Header>
Octets message(std::uint16_t type, std::uint32_t number, const Header& payload) {
    nlmsghdr header{};
    header.nlmsg_len = sizeof(header) + sizeof(payload);
    header.nlmsg_type = type;
    header.nlmsg_seq = number;
    Octets octets(header.nlmsg_len);
    std::memcpy(octets.data(), &header, sizeof(header));
    std::memcpy(octets.data() + sizeof(header), &payload, sizeof(payload));
    return octets;
}

// An acknowledgement, the end of the scan, the end of a dump: whichever is awaited comes.
Octets next_ending() {
    switch (answers_behind_input++ % 3) {
    case 0:
        return message(NLMSG_ERROR, sequence, nlmsgerr{});
    case 1:
        return message(family, 0, genlmsghdr{NL80211_CMD_NEW_SCAN_RESULTS, 1, 0});
    default:
        return message(NLMSG_DONE, sequence, int{});
    }
}

std::size_t next_length() {
    const auto low = static_cast<unsigned char>(parts[0]);
    const auto high = static_cast<unsigned char>(parts[1]);
    parts.remove_prefix(2);
    return low + 256U * high;
}

Octets take(std::size_t at_most) {
    const std::size_t length = std::min(at_most, parts.size());
    Octets octets(parts.begin(), parts.begin() + static_cast<std::ptrdiff_t>(length));
    parts.remove_prefix(length);
    return octets;
}

void check_listing(std::size_t access_points) {
    const std::string text = listing.content();
    require(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) ==
            3 * access_points);
    require(text.find('\0') == std::string_view::npos);
    std::string_view rest = text;
    for (const wivex::AccessPoint& access_point : wivex::scan_table().all()) {
        const std::string bssid = "BSS " + std::string(access_point.bssid.view()) + " \n";
        require(rest.starts_with(bssid) && bssid.size() == 4 + 17 + 2);
        rest.remove_prefix(rest.find("\tSSID: "));
        const std::string ssid = "\tSSID: " + std::string(access_point.ssid.view()) + "\n";
        require(rest.starts_with(ssid));
        rest.remove_prefix(ssid.size());
    }
    require(rest.empty());
}

} // namespace

// These stand in front of the libraries' own for the whole program.
extern "C" {

int nl_recv(nl_sock* /*socket*/, sockaddr_nl* sender, unsigned char** data,
            ucred** /*credentials*/) {
    const bool behind_input = parts.size() < 2;
    const std::size_t length = behind_input ? 0 : next_length();
    if (length == socket_error) {
        dump_broke = dump_broke || sequence == dump_sequence;
        errno = ECONNREFUSED;
        return -NLE_FAILURE;
    }
    const Octets octets = behind_input ? next_ending() : take(length);
    if (octets.empty()) {
        dump_broke = dump_broke || sequence == dump_sequence;
        errno = ENOBUFS;
        return -NLE_NOMEM;
    }
    *sender = {};
    sender->nl_family = AF_NETLINK;
    // The library takes whole headers from the buffer and frees it.
    *data = static_cast<unsigned char*>(std::calloc(1, octets.size() + sizeof(nlmsghdr)));
    std::memcpy(*data, octets.data(), octets.size());
    return static_cast<int>(octets.size());
}

int nl_send_auto_complete(nl_sock* /*socket*/, nl_msg* request) {
    nlmsg_hdr(request)->nlmsg_seq = ++sequence;
    return static_cast<int>(nlmsg_hdr(request)->nlmsg_len);
}

int genl_ctrl_resolve(nl_sock* /*socket*/, const char* /*name*/) {
    return family;
}

int genl_ctrl_resolve_grp(nl_sock* /*socket*/, const char* /*name*/, const char* /*group*/) {
    return 5;
}

int nl_socket_add_membership(nl_sock* /*socket*/, int /*group*/) {
    return 0;
}

unsigned int if_nametoindex(const char* /*name*/) noexcept {
    return 3;
}

int poll(pollfd* waiting, nfds_t count, int /*timeout_ms*/) {
    std::for_each_n(waiting, count, [](pollfd& one) { one.revents = POLLIN; });
    return static_cast<int>(count);
}

int nanosleep(const timespec* /*duration*/, timespec* /*left*/) {
    return 0;
}

// The listing stays in memory. The tool is built for large files: this is what its `open` calls.
int open64(const char* path, int flags, ...) {
    using Open = int (*)(const char*, int, ...);
    static const auto open_file = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "open64"));
    if (std::string_view(path) != wivex::scan_listing) {
        return open_file(path, flags, 0666);
    }
    listing.empty();
    listing_opened = true;
    return listing.descriptor();
}
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    parts = fuzz::text_of(data, size);
    sequence = 0;
    answers_behind_input = 0;
    dump_broke = false;
    listing_opened = false;
    wivex::scan_table() = wivex::ScanTable{};
    const int result = wivex::execute_scan_nl_command();
    require(result == 0 || result == -2);
    require(wivex::scan_table().size() <= wivex::scan_table_capacity);
    if (!listing_opened) {
        require(wivex::scan_table().empty() && result == -2);
        return 0;
    }
    require(!dump_broke || result == -2);
    check_listing(wivex::scan_table().size());
    return 0;
}
