// SPDX-License-Identifier: Apache-2.0
#include "world/tool_start.hpp"

#include "world/device_root.hpp"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <sstream>

namespace bench {

namespace {

constexpr const char* library_folders = "/usr/lib";

// The packaged library that changes a program's clock stands in the folder of the architecture.
std::string find_clock_library() {
    for (const auto& folder : std::filesystem::directory_iterator(library_folders)) {
        const auto library = folder.path() / "faketime" / "libfaketime.so.1";
        std::error_code missing;
        if (std::filesystem::exists(library, missing)) {
            return library;
        }
    }
    return {};
}

std::vector<std::string> words_of(const std::string& command) {
    std::istringstream text(command);
    return {std::istream_iterator<std::string>(text), {}};
}

std::string libraries_in_world(const ToolStart& start) {
    std::string libraries;
    for (std::size_t index = 0; index < start.preloads.size(); ++index) {
        libraries += preload_in_world(index);
        libraries += ' ';
    }
    return libraries;
}

} // namespace

std::string preload_in_world(std::size_t index) {
    return "/bench/preload-" + std::to_string(index) + ".so";
}

std::vector<std::string> emulator_words(const ToolStart& start) {
    std::vector<std::string> words = words_of(start.under);
    if (!words.empty() && !start.preloads.empty()) {
        words.insert(words.end(), {"-E", "LD_PRELOAD=" + libraries_in_world(start)});
    }
    if (!path_of_emulator(start).empty()) {
        words.front() = under_in_world;
    }
    return words;
}

std::string path_of_emulator(const ToolStart& start) {
    const std::vector<std::string> words = words_of(start.under);
    return words.empty() || !words.front().starts_with('/') ? "" : words.front();
}

void set_preload_environment(const ToolStart& start) {
    std::string libraries = start.under.empty() ? libraries_in_world(start) : "";
    if (start.speed > 1) {
        const std::string clock = find_clock_library();
        if (clock.empty()) {
            std::fputs("wivex-bench: the package libfaketime is missing\n", stderr);
        }
        libraries += clock;
        setenv("FAKETIME", ("+0 x" + std::to_string(start.speed)).c_str(), 1);
        setenv("FAKETIME_DONT_RESET", "1", 1);
        setenv("FAKETIME_NO_CACHE", "1", 1);
    }
    if (!libraries.empty()) {
        setenv("LD_PRELOAD", libraries.c_str(), 1);
        // A tool that was built with a sanitizer accepts them too.
        setenv("ASAN_OPTIONS", "verify_asan_link_order=0", 1);
    }
}

} // namespace bench
