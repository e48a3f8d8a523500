// SPDX-License-Identifier: Apache-2.0
#include "kernel/netlink_message.hpp"

#include <linux/genetlink.h>

#include <algorithm>

namespace bench {

namespace {

template <typename Value>
void append(Octets& bytes, const Value& value) {
    const auto* const first = reinterpret_cast<const std::uint8_t*>(&value);
    bytes.insert(bytes.end(), first, first + sizeof(value));
}

void pad(Octets& bytes) {
    bytes.resize((bytes.size() + NLMSG_ALIGNTO - 1) / NLMSG_ALIGNTO * NLMSG_ALIGNTO);
}

Octets message(std::uint16_t type, std::uint16_t flags, const nlmsghdr* request,
               const Octets& payload) {
    nlmsghdr header{};
    header.nlmsg_len = static_cast<std::uint32_t>(sizeof(header) + payload.size());
    header.nlmsg_type = type;
    header.nlmsg_flags = flags;
    header.nlmsg_seq = request != nullptr ? request->nlmsg_seq : 0;
    header.nlmsg_pid = request != nullptr ? request->nlmsg_pid : 0;
    Octets bytes;
    append(bytes, header);
    bytes.insert(bytes.end(), payload.begin(), payload.end());
    pad(bytes);
    return bytes;
}

} // namespace

Attributes& Attributes::add(std::uint16_t type, std::span<const std::uint8_t> value) {
    nlattr header{};
    header.nla_len = static_cast<std::uint16_t>(sizeof(header) + value.size());
    header.nla_type = type;
    append(bytes_, header);
    bytes_.insert(bytes_.end(), value.begin(), value.end());
    pad(bytes_);
    return *this;
}

Attributes& Attributes::add_u16(std::uint16_t type, std::uint16_t value) {
    return add(type, octets_of(value));
}

Attributes& Attributes::add_u32(std::uint16_t type, std::uint32_t value) {
    return add(type, octets_of(value));
}

Attributes& Attributes::add_u64(std::uint16_t type, std::uint64_t value) {
    return add(type, octets_of(value));
}

Attributes& Attributes::add_text(std::uint16_t type, std::string_view value) {
    Octets text(value.begin(), value.end());
    text.push_back(0);
    return add(type, text);
}

Attributes& Attributes::add_nested(std::uint16_t type, const Attributes& value) {
    return add(static_cast<std::uint16_t>(type | NLA_F_NESTED), value.bytes());
}

Octets generic_message(const nlmsghdr* request, std::uint16_t family, std::uint8_t command,
                       std::uint16_t flags, const Attributes& attributes) {
    genlmsghdr header{};
    header.cmd = command;
    header.version = 1;
    Octets payload;
    append(payload, header);
    payload.insert(payload.end(), attributes.bytes().begin(), attributes.bytes().end());
    return message(family, flags, request, payload);
}

Octets answer_message(const nlmsghdr& request, int error) {
    nlmsgerr answer{};
    answer.error = -error;
    answer.msg = request;
    Octets payload;
    append(payload, answer);
    return message(NLMSG_ERROR, 0, &request, payload);
}

Octets done_message(const nlmsghdr& request) {
    Octets payload;
    append(payload, std::int32_t{0});
    return message(NLMSG_DONE, NLM_F_MULTI, &request, payload);
}

} // namespace bench
