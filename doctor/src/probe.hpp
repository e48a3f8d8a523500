// SPDX-License-Identifier: Apache-2.0
// What can be told of files without opening them for writing, and without waiting.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace wivex::doctor {

/// Why the file at `path` cannot be read to its end, or empty when it can. A named pipe is never
/// opened.
std::string why_unreadable(const std::string& path);

enum class WriteTrouble { none, cannot_be_opened, waits, no_room };

struct WriteProbe {
    WriteTrouble trouble = WriteTrouble::none;
    std::string why;
};

/// Whether the file at `path` can be made or emptied and then written. It is not touched.
WriteProbe probe_for_writing(const std::string& path, bool links_are_followed);

/// Names in the folder, in its own order; empty when it cannot be read.
std::vector<std::string> names_in(const std::string& folder);

/// The last part of the path that the link `path` leads to; empty when it is none.
std::string link_name(const std::string& path);

/// The first line of a small file; empty when there is none.
std::string line_of(const std::string& path);

/// Whether the kernel has a network interface of this name.
bool has_interface(const char* name);

struct FoundProgram {
    enum class State { runs, missing, not_executable };
    State state = State::missing;
    std::string path;
};

/// Looks for a program as the shell does: by PATH, or where its name says when it has a "/".
FoundProgram find_program(std::string_view name);

} // namespace wivex::doctor
