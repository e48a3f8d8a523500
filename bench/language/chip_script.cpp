// SPDX-License-Identifier: Apache-2.0
#include "language/chip_script.hpp"

#include "language/scenario_line.hpp"

#include <array>

namespace bench {

namespace {

bool read_phy(ScenarioLine& line, ChipScript& script) {
    const auto name = line.take_any();
    script.phy = name.value_or("");
    return name.has_value();
}

bool read_register(ScenarioLine& line, ChipScript& script) {
    const auto address = line.take_word32();
    const auto text = line.take("reads") ? line.take_quoted() : std::nullopt;
    if (!address || !text) {
        return false;
    }
    script.registers[*address] = *text;
    return true;
}

bool read_memory(ScenarioLine& line, ChipScript& script) {
    if (line.take("ends")) {
        script.memory_end = line.take("at") ? line.take_word32() : std::nullopt;
        return script.memory_end.has_value();
    }
    const auto address = line.take_word32();
    const auto word = line.take("holds") ? line.take_word32() : std::nullopt;
    if (!address || !word) {
        return false;
    }
    script.words[*address] = *word;
    return true;
}

} // namespace

bool read_chip(ScenarioLine& line, ChipScript& script) {
    constexpr std::array<Reader<ChipScript>, 3> readers{
        {{"phy", read_phy}, {"register", read_register}, {"memory", read_memory}}};
    return read_by_word(line, script, readers);
}

} // namespace bench
