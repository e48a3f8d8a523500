// SPDX-License-Identifier: Apache-2.0
#include "console/console_texts.hpp"

#include "console/text_tables.hpp"

#include <vector>

namespace wivex::report {

namespace {

std::vector<TextRow> joined_tables() {
    std::vector<TextRow> rows;
    for (const std::span<const TextRow> table : {texts_of_runs(), texts_of_modes()}) {
        rows.insert(rows.end(), table.begin(), table.end());
    }
    return rows;
}

bool told_on_standard_error(const TextRow& row) {
    switch (row.cause) {
    case Cause::session_not_open:
    case Cause::target_missing:
    case Cause::iperf_client:
    case Cause::network_not_disabled:
    case Cause::address_not_set:
    case Cause::dhcp_server:
    case Cause::no_group_started:
    case Cause::group_not_added:
    case Cause::iperf_server:
        return true;
    default:
        return row.trait == Trait::on_standard_error;
    }
}

bool is_unmistakable(const TextRow& row) {
    if (row.trait == Trait::anybodys) {
        return false;
    }
    return row.tells == nullptr ? row.text.starts_with(tool_prefix) : row.text.front() != '-';
}

} // namespace

std::span<const TextRow> console_texts() {
    static const std::vector<TextRow> rows = joined_tables();
    return rows;
}

ToolText typed(const Match& match) {
    const TextRow& row = *match.row;
    return {row.phase,
            row.cause,
            row.mode,
            is_unmistakable(row),
            told_on_standard_error(row),
            row.tells == nullptr ? Told() : row.tells(match)};
}

} // namespace wivex::report
