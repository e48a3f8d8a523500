// SPDX-License-Identifier: Apache-2.0
#include "recordings.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace report_test {

namespace {

namespace fs = std::filesystem;

constexpr const char* console_ending = ".console";
constexpr const char* result_ending = ".result";

std::string read_text(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

// Renamed into its place: a reader never sees half of it.
void write_text(const fs::path& path, const std::string& text) {
    const fs::path beside = path.string() + ".new";
    std::ofstream file(beside, std::ios::binary);
    file << text;
    file.close();
    if (!file) {
        throw std::runtime_error("cannot write " + beside.string());
    }
    fs::rename(beside, path);
}

} // namespace

void keep(const std::string& folder, const Recording& recording) {
    fs::create_directories(folder);
    const fs::path base = fs::path(folder) / recording.name;
    const fs::path result = base.string() + result_ending;
    if (recording.result_file) {
        write_text(result, *recording.result_file);
    } else {
        fs::remove(result);
    }
    write_text(base.string() + console_ending, recording.console);
}

std::vector<Recording> recordings_in(const std::string& folder) {
    std::vector<Recording> list;
    if (!fs::is_directory(folder)) {
        return list;
    }
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() != console_ending) {
            continue;
        }
        Recording recording{entry.path().stem(), read_text(entry.path()), {}};
        const fs::path result = fs::path(entry.path()).replace_extension(result_ending);
        if (fs::exists(result)) {
            recording.result_file = read_text(result);
        }
        list.push_back(std::move(recording));
    }
    std::ranges::sort(list, {}, &Recording::name);
    return list;
}

} // namespace report_test
