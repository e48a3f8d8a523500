// SPDX-License-Identifier: Apache-2.0
// The system calls of a run, as the tracer wrote them down with their stacks.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace faults {

struct Call {
    std::string name;
    /// Counts the calls of this name from the start of the program, from 1.
    int nth = 0;
    /// What stands between the parentheses, descriptors with their files: "5</tmp/output>".
    std::string arguments;
    /// The innermost function of the tool that it was made for; empty when there is none.
    std::string caller;
    /// Made by the tool, or by the library function that it called; not by what the bench loads
    /// into the tool's process.
    bool of_the_tool = true;
};

/// Reads the tracer's log: a line for each call, and below it a line " > FILE(FUNCTION+0x1)" for
/// each frame of its stack, the innermost first.
std::vector<Call> read_call_log(std::string_view log);

/// The calls of the tool behind the one that shows its banner.
std::vector<Call> calls_after_the_banner(const std::vector<Call>& calls);

/// The call that the tracer made to fail, if the log of the run has one. It need not be the one
/// that was meant: a run can make a call more, or a call less, before it.
std::optional<Call> call_that_failed(std::string_view log);

} // namespace faults
