// SPDX-License-Identifier: Apache-2.0
// junit.xml to the letter: a run with times, failures and limits, one that was interrupted, those
// that were left out, and no run at all.

#include "consoles.hpp"
#include "limit_options.hpp"
#include "writers/junit_writer.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <string_view>

namespace {

using namespace report_test;
using namespace wivex::report;

// As a logging tool writes it: a line each quarter of a second.
std::string each_quarter_second(const std::string& console) {
    return stamped_lines(console, [](int line) {
        std::array<char, 64> stamp{};
        std::snprintf(stamp.data(), stamp.size(), "2026-03-01T10:00:%06.3fZ", line * 0.25);
        return std::string(stamp.data());
    });
}

constexpr std::string_view document_with_times = R"xml(
<?xml version="1.0" encoding="UTF-8"?>
<testsuites>
 <testsuite name="wivex legacy WLAN" package="wivex" id="0" timestamp="2026-03-01T10:00:00" hostname="unknown" tests="16" failures="2" errors="2" skipped="1" time="21.250">
  <properties>
   <property name="serial" value="SN-7" />
   <property name="attempt" value="2" />
   <property name="fact.kernel" value="6.1" />
   <property name="run_id" value="db7e73d0fa7a46937ed20a012c1ead8a" />
   <property name="began_at" value="2026-03-01T10:00:00+00:00" />
   <property name="ended_at" value="2026-03-01T10:00:14+00:00" />
   <property name="mode" value="legacy-wlan" />
   <property name="end" value="interrupted" />
   <property name="verdict" value="failed" />
   <property name="build" value="WIVEX2_0_160421_INCREASE_SCAN_RESULT_SIZE" />
   <property name="config_file" value="/lib/modules/wifi/wivex.cfg" />
   <property name="vendor_id" value="0cf3" />
   <property name="product_id" value="9378" />
   <property name="iterations" value="3" />
   <property name="result_file_test_case_8" value="1" />
  </properties>
  <testcase name="iteration 0" classname="wivex.legacy-wlan.module" time="0.500" />
  <testcase name="iteration 0" classname="wivex.legacy-wlan.driver" time="0.250" />
  <testcase name="iteration 0" classname="wivex.legacy-wlan.scan" time="0.750">
   <failure message="SCAN refused" type="scan-rejected">  [WIFI]Chip vendor id = 0cf3 and product id 9378
  [WIFI]MODULE CONNECTED
  [WIFI]WIFI DRIVER READY
  Scan Command not successful
  Fail to send Scan Command!!!
&gt; ERROR:SCAN-FAIL
  [WIFI]Here at 217 wpa_ctrl_close...
Look first at: is the interface up, the module still on the bus? Does the supplicant still run?
</failure>
  </testcase>
  <testcase name="iteration 1" classname="wivex.legacy-wlan.module" time="0.500" />
  <testcase name="iteration 1" classname="wivex.legacy-wlan.driver" time="0.250" />
  <testcase name="iteration 1" classname="wivex.legacy-wlan.scan" time="0.750" />
  <testcase name="iteration 1" classname="wivex.legacy-wlan.associate" time="0.750" />
  <testcase name="iteration 1" classname="wivex.legacy-wlan.dhcp" time="0.750" />
  <testcase name="iteration 1" classname="wivex.legacy-wlan.traffic" time="1.000" />
  <testcase name="iteration 1" classname="wivex.legacy-wlan.disconnect" time="0.500" />
  <testcase name="iteration 2" classname="wivex.legacy-wlan.module" time="0.500" />
  <testcase name="iteration 2" classname="wivex.legacy-wlan.driver" time="0.250" />
  <testcase name="iteration 2" classname="wivex.legacy-wlan.scan" time="0.500">
   <skipped />
  </testcase>
  <testcase name="run" classname="wivex.legacy-wlan.run" time="14.000">
   <error message="1 of 3 iterations failed" type="failed">1 of 3 iterations failed
no address by DHCP: 1 time; the test went on, and the result file does not count it
1 iteration did not come to the end
the mode showed a pass in only 1 of 3 iterations
</error>
  </testcase>
  <testcase name="limit failures &lt;= 1" classname="wivex.legacy-wlan.limit" time="0.000">
   <error message="failures &lt;= 1: unknown, 1; the console does not show the whole run" type="unknown" />
  </testcase>
  <testcase name="limit throughput >= 100 Mbit/s" classname="wivex.legacy-wlan.limit" time="0.000">
   <failure message="throughput >= 100 Mbit/s: outside, 94 Mbit/s; 1 iteration: 1" type="outside">1</failure>
  </testcase>
  <system-out></system-out>
  <system-err></system-err>
 </testsuite>
</testsuites>
)xml";

TEST(JunitDocument, has_times_failures_limits_and_the_device) {
    Log log = read(each_quarter_second(banner + refused + without_address + checks_pass +
                                       "Scan Command Sent Successfully...\n" + interrupt),
                   with_limits({"failures<=1", "throughput>=100"}));
    log.identity.serial = "SN-7";
    log.identity.attempt = 2;
    log.identity.facts.emplace_back("kernel", "6.1");
    EXPECT_EQ(write_junit(log), document_with_times.substr(1));
}

constexpr std::string_view document_of_a_weak_pass = R"xml(
<?xml version="1.0" encoding="UTF-8"?>
<testsuites>
 <testsuite name="wivex scan" package="wivex" id="0" timestamp="2026-03-01T10:00:00" hostname="unknown" tests="4" failures="0" errors="0" skipped="0" time="5.250">
  <properties>
   <property name="run_id" value="f606f0d36c575ff1f8897a7b7cd05c81" />
   <property name="began_at" value="2026-03-01T10:00:00+00:00" />
   <property name="ended_at" value="2026-03-01T10:00:04+00:00" />
   <property name="mode" value="scan" />
   <property name="end" value="finished" />
   <property name="verdict" value="passed" />
   <property name="build" value="WIVEX2_0_160421_INCREASE_SCAN_RESULT_SIZE" />
   <property name="config_file" value="/lib/modules/wifi/wivex.cfg" />
   <property name="vendor_id" value="0cf3" />
   <property name="product_id" value="9378" />
   <property name="iterations" value="1" />
  </properties>
  <testcase name="iteration 0" classname="wivex.scan.module" time="0.500" />
  <testcase name="iteration 0" classname="wivex.scan.driver" time="0.250" />
  <testcase name="iteration 0" classname="wivex.scan.scan" time="0.250" />
  <testcase name="run" classname="wivex.scan.run" time="4.250" />
  <system-out>The scan heard nothing (1 time) and counts as passed. This shows that a scan ran, not that the radio hears anything.
</system-out>
  <system-err></system-err>
 </testsuite>
</testsuites>
)xml";

TEST(JunitDocument, says_what_a_pass_does_not_show) {
    const Log log = read(each_quarter_second(banner + checks_pass +
                                             "[WIFI]SCAN SUCCESS AND RUN IN SHIELD ROOM\n" + end));
    EXPECT_EQ(write_junit(log), document_of_a_weak_pass.substr(1));
}

constexpr std::string_view document_without_times = R"xml(
<?xml version="1.0" encoding="UTF-8"?>
<testsuites>
 <testsuite name="wivex legacy WLAN" package="wivex" id="0" timestamp="1970-01-01T00:00:00" hostname="unknown" tests="4" failures="1" errors="1" skipped="0" time="0.000">
  <properties>
   <property name="run_id" value="73d2612da3006c82f81de5f699834cc8" />
   <property name="mode" value="legacy-wlan" />
   <property name="end" value="interrupted" />
   <property name="verdict" value="failed" />
   <property name="build" value="WIVEX2_0_160421_INCREASE_SCAN_RESULT_SIZE" />
   <property name="config_file" value="/lib/modules/wifi/wivex.cfg" />
   <property name="vendor_id" value="0cf3" />
   <property name="product_id" value="9378" />
   <property name="iterations" value="1" />
  </properties>
  <testcase name="iteration 0" classname="wivex.legacy-wlan.module" time="0.000" />
  <testcase name="iteration 0" classname="wivex.legacy-wlan.driver" time="0.000" />
  <testcase name="iteration 0" classname="wivex.legacy-wlan.scan" time="0.000">
   <failure message="SCAN refused (interrupted before it was counted)" type="scan-rejected">  
  [WIFI]Chip type is = 2
  [WIFI]Chip vendor id = 0cf3 and product id 9378
  [WIFI]MODULE CONNECTED
  [WIFI]WIFI DRIVER READY
&gt; ERROR:SCAN-FAIL
  [WIFI] Got ^C. Writing results to file before quitting.Please hold on...
Look first at: is the interface up, the module still on the bus? Does the supplicant still run?
</failure>
  </testcase>
  <testcase name="run" classname="wivex.legacy-wlan.run" time="0.000">
   <error message="SCAN refused: 1 time at the interrupt, before the tool counted it" type="failed">SCAN refused: 1 time at the interrupt, before the tool counted it
1 iteration did not come to the end
the mode showed a pass in only 0 of 1 iteration
</error>
  </testcase>
  <system-out>The console had no times: every time is 0.
When the run began is not known: the time stamp is a placeholder.
</system-out>
  <system-err></system-err>
 </testsuite>
</testsuites>
)xml";

TEST(JunitDocument, says_that_times_are_not_known_and_a_failure_was_not_counted) {
    const Log log = read(banner + checks_pass + "ERROR:SCAN-FAIL\n" + interrupt);
    EXPECT_EQ(write_junit(log), document_without_times.substr(1));
}

constexpr std::string_view suite_of_runs_left_out = R"xml(
 <testsuite name="wivex runs left out" package="wivex" id="8" timestamp="1970-01-01T00:00:00" hostname="unknown" tests="3" failures="1" errors="1" skipped="0" time="0.000">
  <properties />
  <testcase name="earlier runs, passed" classname="wivex.left-out.run" time="0.000" />
  <testcase name="earlier runs, failed" classname="wivex.left-out.run" time="0.000">
   <error message="1 run" type="failed" />
  </testcase>
  <testcase name="limit failures &lt;= 0" classname="wivex.left-out.limit" time="0.000">
   <failure message="failures &lt;= 0: outside, 1; 1 iteration: 0" type="outside">0</failure>
  </testcase>
  <system-out>Only the last 8 runs are listed.
</system-out>
  <system-err></system-err>
 </testsuite>
</testsuites>
)xml";

TEST(JunitDocument, ends_with_the_runs_that_were_left_out) {
    const std::string small = banner + checks_pass + "[WIFI]SCAN SUCCESS\n" + end;
    std::string console = banner + refused + end;
    for (int i = 0; i < 9; ++i) {
        console += small;
    }
    const std::string text = write_junit(read(console, with_limits({"failures<=0"})));
    EXPECT_EQ(text.substr(text.find(" <testsuite name=\"wivex runs left out")),
              suite_of_runs_left_out.substr(1));
}

constexpr std::string_view document_without_run = R"xml(
<?xml version="1.0" encoding="UTF-8"?>
<testsuites>
 <testsuite name="wivex" package="wivex" id="0" timestamp="1970-01-01T00:00:00" hostname="unknown" tests="2" failures="0" errors="2" skipped="0" time="0.000">
  <properties />
  <testcase name="run" classname="wivex.unknown.run" time="0.000">
   <error message="No run on this console" type="unknown" />
  </testcase>
  <testcase name="limit failures &lt;= 0" classname="wivex.unknown.limit" time="0.000">
   <error message="failures &lt;= 0: unknown; there is no run" type="unknown" />
  </testcase>
  <system-out></system-out>
  <system-err></system-err>
 </testsuite>
</testsuites>
)xml";

TEST(JunitDocument, is_an_error_without_any_run) {
    EXPECT_EQ(write_junit(read("nothing of the tool\n", with_limits({"failures<=0"}))),
              document_without_run.substr(1));
}

} // namespace
