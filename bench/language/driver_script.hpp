// SPDX-License-Identifier: Apache-2.0
// What the simulated driver answers, as a scenario's "driver" lines say it.
#pragma once

#include "language/times.hpp"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace bench {

class ScenarioLine;

enum class RequestKind { variable, command, address, socket, table };

/// A request by its kind and, for variables and commands, its name or number.
struct DriverRequest {
    RequestKind kind = RequestKind::variable;
    std::string name;

    bool operator==(const DriverRequest&) const = default;
    bool operator<(const DriverRequest& other) const {
        return std::tie(kind, name) < std::tie(other.kind, other.name);
    }
};

struct DriverAnswer {
    DriverRequest request;
    Times times;
    /// 0 when the request succeeds, else its error number.
    int error = 0;
    int delay_ms = 0;
    /// What the driver writes into the caller's buffer, and where.
    std::vector<std::uint8_t> bytes;
    std::size_t offset = 0;
    /// A length or count other than the true one.
    std::optional<std::uint32_t> claimed;
};

struct PrivateRequest {
    std::uint32_t number = 0;
    std::string name;
};

/// The table in which the driver describes its private requests.
struct PrivateTable {
    std::size_t size = 0;
    /// Whether a caller whose table is too small is told the size it needs.
    bool hints = false;
    /// Entries that differ from the filling, by index.
    std::map<std::size_t, PrivateRequest> entries;
};

struct DriverScript {
    std::vector<DriverAnswer> answers;
    PrivateTable table;

    bool empty() const {
        return answers.empty();
    }
};

/// Reads what follows the word "driver" on a line; false when it is not understood.
bool read_driver(ScenarioLine& line, DriverScript& script);

} // namespace bench
