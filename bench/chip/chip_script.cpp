// SPDX-License-Identifier: Apache-2.0
#include "chip/chip_script.hpp"

#include "line.hpp"

namespace bench {

namespace {

bool read_phy(Line& line, ChipScript& script) {
    const auto name = line.take_any();
    script.phy = name.value_or("");
    return name.has_value();
}

bool read_register(Line& line, ChipScript& script) {
    const auto address = line.take_word32();
    const auto text = line.take("reads") ? line.take_quoted() : std::nullopt;
    if (!address || !text) {
        return false;
    }
    script.registers[*address] = *text;
    return true;
}

bool read_memory(Line& line, ChipScript& script) {
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

bool read_chip(Line& line, ChipScript& script) {
    if (line.take("phy")) {
        return read_phy(line, script);
    }
    if (line.take("register")) {
        return read_register(line, script);
    }
    return line.take("memory") && read_memory(line, script);
}

} // namespace bench
