// SPDX-License-Identifier: Apache-2.0
// The files that the run writes: result file, status file, listing.
#include "checks.hpp"
#include "common/process_state.hpp"
#include "diag/nl80211_scan.hpp"
#include "probe.hpp"
#include "run/results.hpp"
#include "text.hpp"

namespace wivex::doctor {

namespace {

struct OutputFile {
    std::string path;
    bool links_are_followed;
    const char* cannot_open;
    const char* no_room;
    const char* option;
};

void judge(const OutputFile& file, Point& point) {
    const WriteProbe probe = probe_for_writing(file.path, file.links_are_followed);
    const std::string elsewhere =
        file.option[0] == '\0' ? std::string() : std::string("; or another file: ") + file.option;
    switch (probe.trouble) {
    case WriteTrouble::none:
        return;
    case WriteTrouble::cannot_be_opened:
        point.bad(printable(probe.why), file.cannot_open,
                  "make its folder, writable; run as root" + elsewhere);
        return;
    case WriteTrouble::no_room:
        point.bad(printable(probe.why), file.no_room, "make room there: df" + elsewhere);
        return;
    case WriteTrouble::waits:
        point.bad(printable(probe.why) + ": the run stands still there", "",
                  "rm " + shell_word(file.path) + elsewhere);
        return;
    }
}

} // namespace

Point check_files(const Facts& facts) {
    Point point("files");
    if (facts.plan.softap) {
        point.skip("-A writes no file");
        return point;
    }
    const std::string& chosen = run_options.result_file;
    const OutputFile result{
        chosen.empty() ? default_result_file : chosen, true,
        "[WIFI]Unable to open Result File: ", "[WIFI]Unable to write Result File: ", "-R/path"};
    point.found = printable(result.path);
    if (facts.plan.mode == 'S') {
        const OutputFile status{
            run_options.ap_status_file, run_options.ap_status_links == Links::follow,
            "[WIFI]not able to open file", "[WIFI]not able to open file", "-D/path"};
        const OutputFile listing{scan_listing, false, "File open error", "File write error", ""};
        point.found += ", " + printable(status.path) + ", " + scan_listing;
        judge(listing, point);
        judge(status, point);
    }
    judge(result, point);
    return point;
}

} // namespace wivex::doctor
