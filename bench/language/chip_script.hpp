// SPDX-License-Identifier: Apache-2.0
// What the simulated chip shows of itself, as a scenario's "chip" lines say it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace bench {

class ScenarioLine;

struct ChipScript {
    /// The phy directory beside whose name the register files stand; none without a name.
    std::string phy;
    /// What reading "reg_dump" yields while a register is selected.
    std::map<std::uint32_t, std::string> registers;
    /// Words of target memory behind the DIAG device; without any there is none.
    std::map<std::uint32_t, std::uint32_t> words;
    /// First address that the DIAG device cannot read.
    std::optional<std::uint32_t> memory_end;
};

/// Reads what follows the word "chip" on a line; false when it is not understood.
bool read_chip(ScenarioLine& line, ChipScript& script);

} // namespace bench
