// SPDX-License-Identifier: Apache-2.0
#include "hanging_folder.hpp"

#include "text_parts.hpp"

#include <fcntl.h>
#include <linux/fuse.h>
#include <poll.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

namespace bench_test {

namespace {

constexpr std::uint64_t folder_node = FUSE_ROOT_ID;
constexpr std::uint64_t file_node = 2;
constexpr std::uint64_t seconds_valid = 3600;
constexpr int slow_ms = 200;

fuse_attr attributes_of(std::uint64_t node) {
    fuse_attr attributes{};
    attributes.ino = node;
    attributes.mode = node == folder_node ? S_IFDIR | 0755U : S_IFREG | 0644U;
    attributes.nlink = 1;
    return attributes;
}

template <typename Part>
std::vector<char> bytes_of(const Part& part) {
    std::vector<char> bytes(sizeof(part));
    std::memcpy(bytes.data(), &part, sizeof(part));
    return bytes;
}

std::vector<char> welcome() {
    fuse_init_out settings{};
    settings.major = FUSE_KERNEL_VERSION;
    settings.minor = FUSE_KERNEL_MINOR_VERSION;
    settings.max_write = 65536;
    return bytes_of(settings);
}

std::vector<char> entry() {
    fuse_entry_out found{};
    found.nodeid = file_node;
    found.entry_valid = seconds_valid;
    found.attr_valid = seconds_valid;
    found.attr = attributes_of(file_node);
    return bytes_of(found);
}

std::vector<char> attributes(std::uint64_t node) {
    fuse_attr_out known{};
    known.attr_valid = seconds_valid;
    known.attr = attributes_of(node);
    return bytes_of(known);
}

std::vector<char> opened() {
    fuse_open_out file{};
    file.open_flags = FOPEN_DIRECT_IO;
    return bytes_of(file);
}

void send(int device, std::uint64_t request, int error, const std::vector<char>& body) {
    fuse_out_header header{};
    header.len = static_cast<std::uint32_t>(sizeof(header) + body.size());
    header.error = -error;
    header.unique = request;
    std::vector<char> text(body);
    const std::array<iovec, 2> parts{{{&header, sizeof(header)}, {text.data(), text.size()}}};
    [[maybe_unused]] const ssize_t sent = writev(device, parts.data(), parts.size());
}

} // namespace

HangingFolder::HangingFolder() : device_(open("/dev/fuse", O_RDWR | O_CLOEXEC)) {
    if (mkdtemp(path_.data()) == nullptr || device_.get() < 0) {
        return;
    }
    const std::string options = "fd=" + std::to_string(device_.get()) +
                                ",rootmode=40000,user_id=" + std::to_string(getuid()) +
                                ",group_id=" + std::to_string(getgid());
    mounted_ = mount("hanging", path_.c_str(), "fuse", 0, options.c_str()) == 0;
    if (mounted_) {
        server_ = std::thread([this] { serve(); });
    }
}

HangingFolder::~HangingFolder() {
    release();
    rmdir(path_.c_str());
}

void HangingFolder::release() {
    if (mounted_.exchange(false)) {
        umount2(path_.c_str(), MNT_FORCE);
        umount2(path_.c_str(), MNT_DETACH);
        server_.join();
        device_ = wivex::UniqueFd();
    }
}

void HangingFolder::take_time_for(std::string text) {
    const std::lock_guard guard(mutex_);
    slow_text_ = std::move(text);
}

std::string HangingFolder::content() const {
    const std::lock_guard guard(mutex_);
    return content_;
}

void HangingFolder::serve() {
    std::vector<char> request(FUSE_MIN_READ_BUFFER + 65536);
    for (;;) {
        const ssize_t length = read(device_.get(), request.data(), request.size());
        if (length > 0) {
            answer(std::span(request).first(static_cast<std::size_t>(length)));
        } else if (errno == ENODEV) {
            return; // unmounted
        }
    }
}

void HangingFolder::answer(std::span<const char> request) {
    fuse_in_header header{};
    std::memcpy(&header, request.data(), sizeof(header));
    const auto reply = [this, &header](const std::vector<char>& body, int error = 0) {
        send(device_.get(), header.unique, error, body);
    };
    switch (header.opcode) {
    case FUSE_INIT:
        return reply(welcome());
    case FUSE_LOOKUP:
        return reply(entry());
    case FUSE_GETATTR:
    case FUSE_SETATTR:
        return reply(attributes(header.nodeid));
    case FUSE_OPEN:
        return reply(opened());
    case FUSE_STATFS:
        return reply(bytes_of(fuse_statfs_out{}));
    case FUSE_WRITE:
        break;
    case FUSE_FORGET:
    case FUSE_BATCH_FORGET:
    case FUSE_INTERRUPT:
        return;
    default:
        return reply({}, ENOSYS);
    }
    if (hangs_) {
        return;
    }
    const auto text = request.subspan(sizeof(header) + sizeof(fuse_write_in));
    if (!take_in({text.data(), text.size()})) {
        return reply({}, EINTR);
    }
    fuse_write_out taken{};
    taken.size = static_cast<std::uint32_t>(text.size());
    reply(bytes_of(taken));
}

bool HangingFolder::take_in(std::string_view text) {
    const std::lock_guard guard(mutex_);
    if (!slow_text_.empty() && contains(text, slow_text_)) {
        // Nobody else uses the file: what comes meanwhile tells that the writer ends.
        pollfd waiting{device_.get(), POLLIN, 0};
        if (poll(&waiting, 1, slow_ms) != 0) {
            return false;
        }
    }
    content_.append(text);
    return true;
}

} // namespace bench_test
