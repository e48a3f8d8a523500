// SPDX-License-Identifier: Apache-2.0
#include "kernel/simulated_driver.hpp"

#include "kernel/octets.hpp"
#include "kernel/preloaded.hpp"
#include "kernel/request_log.hpp"
#include "language/conventions.hpp"

#include <errno.h>
#include <linux/if.h>
#include <linux/if_arp.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <utility>

namespace bench {

namespace {

constexpr std::size_t variable_buffer_size = 128;
// An ordinary kernel copies no more of a private answer, whatever length the driver reports.
constexpr std::size_t longest_private_answer = 2047;

// The record behind SIOCDEVPRIVATE as a bcmdhd driver reads it.
struct VariableRecord {
    std::uint32_t command;
    std::uint8_t* buffer;
    std::uint32_t length;
    std::uint8_t set;
    std::uint32_t used;
    std::uint32_t needed;
    std::uint32_t magic;
};

VariableRecord* record_of(const void* request) {
    return reinterpret_cast<VariableRecord*>(static_cast<const ifreq*>(request)->ifr_data);
}

// A driver copies as many bytes as the record says, and no more.
std::size_t length_of(const VariableRecord& record) {
    return std::min<std::size_t>(record.length, variable_buffer_size);
}

std::string name_in(const VariableRecord& record) {
    const auto* const name = reinterpret_cast<const char*>(record.buffer);
    return {name, strnlen(name, length_of(record))};
}

PointerPlace pointer_at(std::size_t offset) {
    return {offset, sizeof(void*)};
}

// Writes the request to the log first, so that it shows while the driver works on it.
int conclude(const DriverAnswer& answer, RequestEntry& entry) {
    const int result = answer.error == 0 ? 0 : -1;
    entry.finish(result, answer.error);
    append_to_log(std::string(log_folder) + "/driver.log", entry);
    pause_ms(answer.delay_ms);
    errno = answer.error;
    return result;
}

void copy_answer(const DriverAnswer& answer, std::uint8_t* buffer, std::size_t capacity) {
    if (answer.error != 0 || answer.offset >= capacity) {
        return;
    }
    const std::size_t count = std::min(answer.bytes.size(), capacity - answer.offset);
    std::copy_n(answer.bytes.begin(), count, buffer + answer.offset);
}

// The first entry tells the kernel how long an answer can be, and has no name.
iw_priv_args usual_entry(std::size_t index) {
    iw_priv_args entry{};
    if (index == 0) {
        entry.cmd = private_get_request;
        entry.get_args = IW_PRIV_TYPE_CHAR | longest_private_answer;
        return entry;
    }
    entry.cmd = static_cast<std::uint32_t>(index);
    ("fill" + std::to_string(index)).copy(entry.name, sizeof(entry.name));
    return entry;
}

void fill_table(const PrivateTable& table, iw_priv_args* entries, std::size_t count) {
    for (std::size_t index = 0; index < count; ++index) {
        const auto scripted = table.entries.find(index);
        if (scripted == table.entries.end()) {
            entries[index] = usual_entry(index);
            continue;
        }
        entries[index] = {};
        entries[index].cmd = scripted->second.number;
        scripted->second.name.copy(entries[index].name, sizeof(entries[index].name));
    }
}

// Fills the caller's table, or says that it is too small. Returns the error number, or 0.
int describe_requests(const PrivateTable& table, iw_point& data) {
    const std::size_t capacity = data.length;
    if (table.size > capacity) {
        if (table.hints) {
            data.length = static_cast<std::uint16_t>(table.size);
        }
        return E2BIG;
    }
    fill_table(table, static_cast<iw_priv_args*>(data.pointer), table.size);
    data.length = static_cast<std::uint16_t>(table.size);
    return 0;
}

RequestKind kind_of(unsigned long request) {
    switch (request) {
    case SIOCDEVPRIVATE:
        return RequestKind::variable;
    case SIOCGIFHWADDR:
        return RequestKind::address;
    case SIOCGIWPRIV:
        return RequestKind::table;
    default:
        return RequestKind::command;
    }
}

// The error number with which a request is refused whose form is wrong; 0 when it is right.
int fault_in(unsigned long request, const void* argument) {
    if (request == SIOCGIFHWADDR) {
        return 0;
    }
    if (request != SIOCDEVPRIVATE) {
        return static_cast<const iwreq*>(argument)->u.data.pointer == nullptr ? EFAULT : 0;
    }
    const VariableRecord* const record = record_of(argument);
    if (record == nullptr || record->buffer == nullptr) {
        return EFAULT;
    }
    return name_in(*record).size() == length_of(*record) ? EINVAL : 0;
}

DriverRequest meaning_of(unsigned long request, const void* argument) {
    const RequestKind kind = kind_of(request);
    switch (kind) {
    case RequestKind::variable:
        return {kind, name_in(*record_of(argument))};
    case RequestKind::command:
        return {kind, std::to_string(static_cast<const iwreq*>(argument)->u.data.flags)};
    default:
        return {kind, ""};
    }
}

void answer_variable(const DriverAnswer& answer, const ifreq& request, RequestEntry& entry) {
    const VariableRecord& record = *record_of(&request);
    entry.add_block("ifreq", octets_of(request), pointer_at(offsetof(ifreq, ifr_data)));
    entry.add_block("record", octets_of(record), pointer_at(offsetof(VariableRecord, buffer)));
    entry.add_block("buffer", {record.buffer, variable_buffer_size});
    copy_answer(answer, record.buffer, length_of(record));
}

void answer_address(const DriverAnswer& answer, ifreq& request, RequestEntry& entry) {
    entry.add_block("ifreq", octets_of(request));
    if (answer.error == 0) {
        request.ifr_hwaddr.sa_family = ARPHRD_ETHER;
    }
    copy_answer(answer, reinterpret_cast<std::uint8_t*>(request.ifr_hwaddr.sa_data),
                sizeof(request.ifr_hwaddr.sa_data));
}

void log_wireless(const iwreq& request, RequestEntry& entry) {
    entry.add_block("iwreq", octets_of(request), pointer_at(offsetof(iwreq, u.data.pointer)));
}

// A table that is too small for the caller turns the answer into a refusal.
void answer_table(const PrivateTable& table, DriverAnswer& answer, iwreq& request,
                  RequestEntry& entry) {
    log_wireless(request, entry);
    if (answer.error == 0) {
        answer.error = describe_requests(table, request.u.data);
    }
    if (answer.claimed && answer.error == 0) {
        request.u.data.length = static_cast<std::uint16_t>(*answer.claimed);
    }
}

// The kernel hands the driver a cleared buffer and copies as much of it as the driver reports. A
// request that is refused stays as it was.
void answer_command(const DriverAnswer& answer, iwreq& request, RequestEntry& entry) {
    log_wireless(request, entry);
    if (answer.error != 0) {
        return;
    }
    std::array<std::uint8_t, longest_private_answer> copied{};
    copy_answer(answer, copied.data(), copied.size());
    const std::size_t length = answer.claimed.value_or(answer.bytes.size());
    std::copy_n(copied.begin(), std::min(length, copied.size()),
                static_cast<std::uint8_t*>(request.u.data.pointer));
    request.u.data.length = static_cast<std::uint16_t>(length);
}

} // namespace

SimulatedDriver::SimulatedDriver(DriverScript script) : script_(std::move(script)) {}

const DriverAnswer* SimulatedDriver::next_answer(const DriverRequest& request) {
    const int count = ++counts_[request];
    const auto fits = [&](const DriverAnswer& answer) {
        return answer.request == request && answer.times.contain(count);
    };
    const auto found = std::find_if(script_.answers.begin(), script_.answers.end(), fits);
    return found == script_.answers.end() ? nullptr : &*found;
}

bool SimulatedDriver::speaks_of(RequestKind kind) const {
    return std::any_of(script_.answers.begin(), script_.answers.end(),
                       [kind](const DriverAnswer& answer) { return answer.request.kind == kind; });
}

std::optional<int> SimulatedDriver::answer(unsigned long request, void* argument) {
    if (!speaks_of(kind_of(request))) {
        return std::nullopt;
    }
    if (const int fault = fault_in(request, argument); fault != 0) {
        errno = fault;
        return -1;
    }
    const DriverRequest meaning = meaning_of(request, argument);
    const DriverAnswer* const scripted = next_answer(meaning);
    if (scripted == nullptr) {
        return std::nullopt;
    }
    DriverAnswer answer = *scripted;
    RequestEntry entry(request);
    switch (meaning.kind) {
    case RequestKind::variable:
        answer_variable(answer, *static_cast<ifreq*>(argument), entry);
        break;
    case RequestKind::address:
        answer_address(answer, *static_cast<ifreq*>(argument), entry);
        break;
    case RequestKind::table:
        answer_table(script_.table, answer, *static_cast<iwreq*>(argument), entry);
        break;
    case RequestKind::command:
        answer_command(answer, *static_cast<iwreq*>(argument), entry);
        break;
    case RequestKind::socket:
        break;
    }
    return conclude(answer, entry);
}

int SimulatedDriver::refuse_socket() {
    const DriverAnswer* const answer = next_answer({RequestKind::socket, ""});
    return answer == nullptr ? 0 : answer->error;
}

} // namespace bench
