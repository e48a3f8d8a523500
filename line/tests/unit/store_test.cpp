// SPDX-License-Identifier: Apache-2.0
#include "scratch.hpp"
#include "store/prune.hpp"
#include "store/quarantine.hpp"
#include "store/schema.hpp"
#include "store/table_dump.hpp"
#include "store/unit_history.hpp"
#include "written_report.hpp"

#include <gmock/gmock.h>

namespace wivex::line {

namespace {

using testing::ElementsAre;

class Store : public testing::Test {
protected:
    AddTotals add(const WrittenReport& report) {
        const std::string name = "reports/" + std::to_string(++written_) + "/run.json";
        return add_files(*database_, {scratch_.write(name, report.text())});
    }

    std::int64_t count(const std::string& of) {
        return number_from(*database_, "select count(*) from " + of);
    }

    Scratch scratch_;
    std::unique_ptr<Database> database_ = made_database(scratch_.path("line.db"));
    int written_ = 0;
};

TEST_F(Store, takes_the_same_run_only_once) {
    EXPECT_EQ(add({}).runs, 1U);
    const AddTotals again = add({});
    EXPECT_EQ(again.runs, 0U);
    EXPECT_EQ(again.known, 1U);
    EXPECT_EQ(again.conflicts, 0U);
    EXPECT_EQ(count("runs"), 1);
    EXPECT_EQ(count("units"), 1);
}

TEST_F(Store, takes_a_report_of_many_runs_whole) {
    nlohmann::ordered_json report = WrittenReport{}.json();
    const nlohmann::ordered_json run = report["runs"][0];
    for (int i = 1; i < 70; ++i) {
        report["runs"].push_back(run);
        report["runs"].back()["id"] = std::string(29, 'b') + std::to_string(100 + i);
    }
    const AddTotals added = add_files(*database_, {scratch_.write("many/run.json", report.dump())});
    EXPECT_EQ(added.runs, 70U);
    EXPECT_EQ(added.refused, 0U);
    EXPECT_EQ(count("runs"), 70);
    EXPECT_EQ(count("unit_macs"), 1);
}

TEST_F(Store, keeps_the_same_run_with_other_content_as_a_conflict) {
    const std::string id(32, 'a');
    add({.id = id});
    const AddTotals other = add({.verdict = "failed", .cause = "dhcp-client", .id = id});
    EXPECT_EQ(other.conflicts, 1U);
    EXPECT_EQ(add({.verdict = "failed", .cause = "dhcp-client", .id = id}).conflicts, 1U);
    EXPECT_EQ(count("runs where passed = 1"), 1);
    EXPECT_EQ(count("conflicts where verdict = 'failed'"), 1);
}

TEST_F(Store, keeps_a_file_that_cannot_be_read_with_its_reason) {
    const std::string path = scratch_.write("broken/run.json", "{");
    EXPECT_EQ(add_files(*database_, {path}).refused, 1U);
    EXPECT_EQ(add_files(*database_, {path}).refused_before, 1U);
    std::vector<std::string> reasons;
    list_quarantine(*database_, false,
                    [&](const QuarantinedFile& file) { reasons.push_back(file.reason); });
    EXPECT_THAT(reasons, ElementsAre("no valid JSON near byte 2"));
}

TEST_F(Store, keeps_a_report_without_a_unit_until_somebody_names_it) {
    add({.serial = ""});
    std::string objection;
    std::string path;
    std::string document;
    ASSERT_TRUE(nameless_document(*database_, 1, objection, path, document).good());
    EXPECT_EQ(objection, "");
    EXPECT_EQ(document, WrittenReport{.serial = ""}.text());
    ASSERT_TRUE(mark_named(*database_, 1, "4711").good());
    ASSERT_TRUE(nameless_document(*database_, 1, objection, path, document).good());
    EXPECT_EQ(objection, "file 1 was taken back before");
    ASSERT_TRUE(nameless_document(*database_, 2, objection, path, document).good());
    EXPECT_EQ(objection, "quarantine holds no file number 2");
}

TEST_F(Store, tells_a_mac_that_two_units_claim_and_a_unit_with_two_macs) {
    add({.serial = "A", .mac = "02:00:00:00:00:01"});
    add({.serial = "B", .mac = "02:00:00:00:00:01"});
    add({.serial = "A", .mac = "02:00:00:00:00:02", .attempt = 2, .began = ""});
    UnitHistory unit;
    ASSERT_TRUE(database_
                    ->read([&](soci::session& session) {
                        UnitReader reader(session);
                        EXPECT_EQ(reader.find("02:00:00:00:00:01").size(), 2U);
                        ASSERT_EQ(reader.find("A").size(), 1U);
                        reader.read(reader.find("A").front(), unit);
                    })
                    .good());
    ASSERT_EQ(unit.macs.size(), 2U);
    EXPECT_THAT(unit.macs.at(0).others, ElementsAre("B"));
    EXPECT_TRUE(unit.macs.at(1).others.empty());
}

TEST_F(Store, forgets_details_but_no_counts) {
    add({.verdict = "failed", .cause = "dhcp-client"});
    Pruned pruned;
    ASSERT_TRUE(prune(*database_, 4'000'000'000, pruned).good());
    EXPECT_EQ(pruned.runs, 1);
    EXPECT_EQ(count("run_causes"), 0);
    EXPECT_EQ(count("run_notes"), 0);
    EXPECT_EQ(count("runs where cause = 'dhcp-client'"), 1);
    EXPECT_EQ(add({.verdict = "failed", .cause = "dhcp-client"}).known, 1U);
    EXPECT_EQ(count("run_causes"), 0);
}

TEST_F(Store, binds_what_would_be_a_statement) {
    add({.serial = "x'); drop table runs; --", .station = "\" or 1=1", .firmware = ":a"});
    EXPECT_EQ(count("runs where station = '\" or 1=1' and firmware = ''||':'||'a'"), 1);
    EXPECT_EQ(count("units where serial like 'x''); drop table%'"), 1);
}

TEST_F(Store, dumps_every_table_and_view) {
    add({});
    for (const std::string& table : exported_tables()) {
        std::size_t columns = 0;
        std::size_t wrong = 0;
        const StoreResult result = dump_table(
            *database_, table,
            [&](const std::vector<std::string>& names) { columns = names.size(); },
            [&](const std::vector<Value>& values) {
                wrong += values.size() != columns ? 1U : 0U;
                return true;
            });
        EXPECT_TRUE(result.good()) << table << ": " << result.words;
        EXPECT_GT(columns, 0U) << table;
        EXPECT_EQ(wrong, 0U) << table;
    }
}

TEST(Schema, comes_from_every_version_to_the_newest) {
    for (int version = 1; version <= newest_schema(); ++version) {
        const Scratch scratch;
        const std::string place = scratch.path("line.db");
        {
            soci::session session("sqlite3", "dbname=" + place);
            bring_up_to_date(session, false, version);
            session << "insert into units (serial) values ('kept')";
        }
        const std::unique_ptr<Database> database = made_database(place);
        EXPECT_EQ(number_from(*database, "select max(version) from schema_steps"), newest_schema());
        EXPECT_EQ(number_from(*database, "select count(*) from units where serial = 'kept'"), 1);
        EXPECT_EQ(number_from(*database, "select count(*) from run_list"), 0);
    }
}

TEST(Schema, of_a_newer_program_is_refused) {
    const Scratch scratch;
    const std::string place = scratch.path("line.db");
    made_database(place)->transact([](soci::session& session) {
        session << "insert into schema_steps (version, done_utc_s) values (99, 0)";
    });
    std::unique_ptr<Database> database;
    const StoreResult result = Database::open(place, true, database);
    EXPECT_EQ(result.words,
              "the database has version 99 of the tables; this wivex-line knows up to 2");
}

TEST(Database, is_not_made_by_who_only_reads) {
    const Scratch scratch;
    std::unique_ptr<Database> database;
    EXPECT_FALSE(Database::open(scratch.path("none.db"), false, database).good());
    EXPECT_FALSE(std::filesystem::exists(scratch.path("none.db")));
}

} // namespace

} // namespace wivex::line
