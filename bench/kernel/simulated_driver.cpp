// SPDX-License-Identifier: Apache-2.0
#include "kernel/simulated_driver.hpp"

#include "kernel/octets.hpp"
#include "kernel/preloaded.hpp"
#include "kernel/request_log.hpp"
#include "language/conventions.hpp"

#include <errno.h>
#include <linux/if.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

namespace bench {

namespace {

constexpr std::size_t variable_buffer_size = 128;
constexpr std::size_t command_buffer_size = 4096;

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

void fill_table(const PrivateTable& table, iw_priv_args* entries, std::size_t count) {
    for (std::size_t index = 0; index < count; ++index) {
        const auto scripted = table.entries.find(index);
        const PrivateRequest request =
            scripted != table.entries.end()
                ? scripted->second
                : PrivateRequest{static_cast<std::uint32_t>(index), "fill" + std::to_string(index)};
        entries[index] = {};
        entries[index].cmd = request.number;
        request.name.copy(entries[index].name, sizeof(entries[index].name));
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

// What the request asks for; nothing when only the kernel knows.
std::optional<DriverRequest> meaning_of(unsigned long request, const void* argument) {
    switch (request) {
    case SIOCDEVPRIVATE: {
        const auto& record =
            *reinterpret_cast<const VariableRecord*>(static_cast<const ifreq*>(argument)->ifr_data);
        const auto* const name = reinterpret_cast<const char*>(record.buffer);
        return DriverRequest{RequestKind::variable,
                             std::string(name, strnlen(name, variable_buffer_size))};
    }
    case SIOCGIFHWADDR:
        return DriverRequest{RequestKind::address, ""};
    case SIOCGIWPRIV:
        return DriverRequest{RequestKind::table, ""};
    case private_get_request:
        return DriverRequest{RequestKind::command,
                             std::to_string(static_cast<const iwreq*>(argument)->u.data.flags)};
    default:
        return std::nullopt;
    }
}

void answer_variable(const DriverAnswer& answer, const ifreq& request, RequestEntry& entry) {
    const auto& record = *reinterpret_cast<const VariableRecord*>(request.ifr_data);
    entry.add_block("ifreq", octets_of(request), pointer_at(offsetof(ifreq, ifr_data)));
    entry.add_block("record", octets_of(record), pointer_at(offsetof(VariableRecord, buffer)));
    entry.add_block("buffer", {record.buffer, variable_buffer_size});
    copy_answer(answer, record.buffer, variable_buffer_size);
}

void answer_address(const DriverAnswer& answer, ifreq& request, RequestEntry& entry) {
    entry.add_block("ifreq", octets_of(request));
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
    if (answer.claimed) {
        request.u.data.length = static_cast<std::uint16_t>(*answer.claimed);
    }
}

void answer_command(const DriverAnswer& answer, iwreq& request, RequestEntry& entry) {
    log_wireless(request, entry);
    copy_answer(answer, static_cast<std::uint8_t*>(request.u.data.pointer), command_buffer_size);
    const std::size_t length = std::min(answer.bytes.size(), command_buffer_size);
    request.u.data.length = static_cast<std::uint16_t>(answer.claimed.value_or(length));
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

std::optional<int> SimulatedDriver::answer(unsigned long request, void* argument) {
    const auto meaning = meaning_of(request, argument);
    const DriverAnswer* const scripted = meaning ? next_answer(*meaning) : nullptr;
    if (scripted == nullptr) {
        return std::nullopt;
    }
    DriverAnswer answer = *scripted;
    RequestEntry entry(request);
    switch (meaning->kind) {
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
