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

// ADDRESS VERB CONTENT
template <typename Content>
bool read_at_address(ScenarioLine& line, std::string_view verb,
                     std::optional<Content> (ScenarioLine::*take_content)(),
                     std::map<std::uint32_t, Content>& contents) {
    const auto address = line.take_word32();
    const auto content = line.take(verb) ? (line.*take_content)() : std::nullopt;
    if (!address || !content) {
        return false;
    }
    contents[*address] = *content;
    return true;
}

bool read_register(ScenarioLine& line, ChipScript& script) {
    return read_at_address(line, "reads", &ScenarioLine::take_quoted, script.registers);
}

bool read_memory(ScenarioLine& line, ChipScript& script) {
    if (line.take("ends")) {
        script.memory_end = line.take("at") ? line.take_word32() : std::nullopt;
        return script.memory_end.has_value();
    }
    return read_at_address(line, "holds", &ScenarioLine::take_word32, script.words);
}

} // namespace

bool read_chip(ScenarioLine& line, ChipScript& script) {
    constexpr std::array<Reader<ChipScript>, 3> readers{
        {{"phy", read_phy}, {"register", read_register}, {"memory", read_memory}}};
    return read_by_word(line, script, readers);
}

} // namespace bench
