// SPDX-License-Identifier: Apache-2.0
#include "program/site.hpp"

#include "store/factory_walk.hpp"
#include "writers/html_text.hpp"
#include "writers/line_page.hpp"
#include "writers/report_files.hpp"
#include "writers/site_page.hpp"
#include "writers/unit_page.hpp"
#include "writers/unit_words.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <map>

namespace wivex::line {

namespace {

namespace fs = std::filesystem;

class SiteWriter {
public:
    SiteWriter(soci::session& session, const SiteOptions& options, SiteResult& result)
        : session_(session), options_(options), result_(result), units_(session) {}

    void write() {
        Factory factory(options_.now, options_.units);
        walk_units(session_, factory);
        const Moment since = factory.periods().back().begin;
        const auto figures = measure_groups(session_, since);
        const auto limits = limit_groups(session_, since);
        const Doubts found = doubts(session_);
        write_units(factory);
        for (const auto& [name, list] : factory.lists().all()) {
            put("/lists", name + ".html",
                list_page(list, [&](std::int64_t unit_no) { return unit_link(unit_no); }));
        }
        // Last: whoever sees it finds what it leads to.
        put("", "index.html", line_page({factory, figures, limits, found}));
    }

private:
    void write_units(const Factory& factory) {
        std::vector<SearchRow> rows;
        UnitHistory unit;
        for (const std::int64_t unit_no : factory.shown_units()) {
            if (!units_.read(unit_no, unit)) {
                continue;
            }
            const std::string page = std::to_string(unit_no) + ".html";
            put("/units", page,
                unit_page(unit, [&](const UnitRun& run) { return report_link(run); }));
            links_[unit_no] = link("../units/" + page, report::escaped(unit.serial));
            rows.push_back(search_row(unit));
        }
        std::ranges::sort(rows, {}, &SearchRow::serial);
        put("", "search.html", search_page(rows, factory.units()));
    }

    static SearchRow search_row(const UnitHistory& unit) {
        const std::vector<Attempt> attempts = unit.attempts();
        const bool dated = !attempts.empty() && attempts.back().began;
        return {unit.unit_no, unit.serial, mac_words(unit), last_verdict(attempts),
                dated ? moment_text(*attempts.back().began) : "without a date"};
    }

    // To the page of the unit, where it has one. Most units stand in several lists.
    const std::string& unit_link(std::int64_t unit_no) {
        const auto [known, is_new] = links_.try_emplace(unit_no);
        if (is_new) {
            known->second = report::escaped(units_.serial(unit_no).value_or("?"));
        }
        return known->second;
    }

    // The report beside the run.json, as seen from the page of a unit.
    Text report_link(const UnitRun& run) const {
        if (!run.report_path) {
            return {};
        }
        std::error_code error;
        const fs::path report = fs::path(*run.report_path).parent_path() / "report.html";
        if (!fs::exists(report, error)) {
            return {};
        }
        const fs::path way = fs::relative(report, fs::path(options_.out) / "units", error);
        return error ? Text() : Text(as_address(way.string()));
    }

    static std::string as_address(const std::string& path) {
        constexpr std::string_view plain = "-._~/";
        std::string address;
        for (const char letter : path) {
            const auto byte = static_cast<unsigned char>(letter);
            if (std::isalnum(byte) != 0 || plain.find(letter) != std::string_view::npos) {
                address += letter;
            } else {
                std::array<char, 4> code{};
                std::snprintf(code.data(), code.size(), "%%%02X", byte);
                address += code.data();
            }
        }
        return address;
    }

    void put(const std::string& folder, const std::string& name, const std::string& content) {
        if (result_.problem.empty()) {
            result_.problem = report::write_into(options_.out + folder, name, content);
            result_.pages += result_.problem.empty() ? 1U : 0U;
        }
    }

    soci::session& session_;
    const SiteOptions& options_;
    SiteResult& result_;
    UnitReader units_;
    std::map<std::int64_t, std::string> links_;
};

} // namespace

SiteResult write_site(Database& database, const SiteOptions& options) {
    SiteResult result;
    result.store = database.read(
        [&](soci::session& session) { SiteWriter(session, options, result).write(); });
    return result;
}

} // namespace wivex::line
