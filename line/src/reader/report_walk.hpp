// SPDX-License-Identifier: Apache-2.0
// Collects what a run.json tells of the columns of the tables. It checks each value by itself;
// what the values mean together is not its business.
#pragma once

#include "model/report.hpp"
#include "reader/json_walker.hpp"

#include <array>

namespace wivex::line {

/// Of the document, and of a run what no table keeps.
inline constexpr auto document_columns = std::to_array<Column>({
    {"format", Kind::text, "/format"},
    {"version", Kind::count, "/version"},
    {"verdict", Kind::text, "/verdict"},
    {"serial", Kind::text, "/identity/serial"},
});
inline constexpr auto evidence_columns = std::to_array<Column>({
    {"clean", Kind::flag, "/runs/*/clean"},
    {"saved", Kind::flag, "/runs/*/result_file_written"},
    {"mac_kernel", Kind::text, "/runs/*/device/mac_kernel"},
    {"mac_chip", Kind::text, "/runs/*/device/mac_chip"},
    {"told_cause", Kind::text}, ///< of the first failure that its console tells
});

/// A run as it stands in the document.
struct WalkedRun {
    RunRecord record;
    Row evidence;
};

/// All that a document tells.
struct Walked {
    Row document;
    /// The columns of a run that the identity tells.
    Row identity;
    std::vector<Row> notes;
    std::vector<WalkedRun> runs;
};

class ReportWalk : public report::JsonWalker {
public:
    explicit ReportWalk(Walked& walked);

protected:
    bool take_number(std::string_view path, double value) override;
    bool take_text(std::string_view path, std::string_view text) override;
    bool take_flag(std::string_view path, bool value) override;
    bool end_of(std::string_view path) override;
    bool wants(std::string_view path) override;

private:
    bool complain(std::string_view path, std::string_view what);
    bool take_other(std::string_view path);
    bool take_note(std::string_view path, std::string_view text);
    bool take_row(const Table& table, Row row);
    Row& place_for(const Table& table, std::string_view path);
    void take_failure(const Row& failure);
    void take_phase(const Row& phase);

    Walked& walked_;
    /// The rows that are being read, one a table.
    std::vector<Row> open_;
    RunRecord run_;
    std::string told_cause_;
};

/// Whether `text` can be the name of a cause, a mode or an end.
bool is_name(std::string_view text);

} // namespace wivex::line
