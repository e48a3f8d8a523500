// SPDX-License-Identifier: Apache-2.0
#include "probe.hpp"
#include "program_answer.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace wivex::doctor {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = testing::TempDir() + "doctorXXXXXX";
        path_ = mkdtemp(pattern.data());
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const fs::path& path() const {
        return path_;
    }

private:
    fs::path path_;
};

class Folder : public testing::Test {
protected:
    std::string at(const std::string& name) const {
        return folder_.path() / name;
    }
    std::string script(const std::string& name, const std::string& text) const {
        std::ofstream(at(name)) << "#!/bin/sh\n" << text << "\n";
        chmod(at(name).c_str(), 0755);
        return at(name);
    }

    TemporaryFolder folder_;
};

using Reading = Folder;
using Writing = Folder;
using Programs = Folder;

TEST_F(Reading, is_told_why_it_fails) {
    std::ofstream(at("file")) << "text";
    EXPECT_EQ(why_unreadable(at("file")), "");
    EXPECT_EQ(why_unreadable(at("none")), "No such file or directory");
    EXPECT_EQ(why_unreadable(folder_.path()), "Is a directory");
}

TEST_F(Reading, never_opens_a_named_pipe) {
    mkfifo(at("pipe").c_str(), 0600);
    EXPECT_THAT(why_unreadable(at("pipe")), HasSubstr("named pipe"));
}

TEST_F(Writing, neither_makes_nor_empties_the_file) {
    std::ofstream(at("old")) << "text";
    EXPECT_EQ(probe_for_writing(at("old"), true).trouble, WriteTrouble::none);
    EXPECT_EQ(fs::file_size(at("old")), 4);
    EXPECT_EQ(probe_for_writing(at("new"), true).trouble, WriteTrouble::none);
    EXPECT_FALSE(fs::exists(at("new")));
}

TEST_F(Writing, is_told_why_it_fails) {
    mkfifo(at("pipe").c_str(), 0600);
    fs::create_symlink(at("target"), at("link"));
    EXPECT_EQ(probe_for_writing(folder_.path(), true).trouble, WriteTrouble::cannot_be_opened);
    EXPECT_EQ(probe_for_writing(at("none/file"), true).trouble, WriteTrouble::cannot_be_opened);
    EXPECT_EQ(probe_for_writing(at("pipe"), true).trouble, WriteTrouble::waits);
    EXPECT_EQ(probe_for_writing(at("link"), false).trouble, WriteTrouble::cannot_be_opened);
    EXPECT_EQ(probe_for_writing("/dev/null", true).trouble, WriteTrouble::none);
}

TEST_F(Programs, are_found_where_their_name_says) {
    const std::string path = script("tool", "");
    EXPECT_EQ(find_program(path).state, FoundProgram::State::runs);
    chmod(path.c_str(), 0644);
    EXPECT_EQ(find_program(path).state, FoundProgram::State::not_executable);
    EXPECT_EQ(find_program(at("none")).state, FoundProgram::State::missing);
    EXPECT_EQ(find_program("sh").state, FoundProgram::State::runs);
    EXPECT_EQ(find_program("no-such-program").state, FoundProgram::State::missing);
}

TEST_F(Programs, answer_on_either_stream) {
    EXPECT_EQ(ask_program(script("tool", "echo $1; echo two >&2"), "-v").text, "-v\ntwo\n");
}

TEST_F(Programs, that_never_end_are_ended) {
    const auto began = std::chrono::steady_clock::now();
    EXPECT_FALSE(ask_program(script("slow", "exec sleep 60"), "-v").ended);
    EXPECT_FALSE(ask_program(script("silent", "exec sleep 60 >/dev/null 2>&1"), "-v").ended);
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(20));
}

TEST_F(Programs, that_print_without_end_are_ended) {
    const ProgramAnswer answer = ask_program(script("loud", "exec yes"), "-v");
    EXPECT_FALSE(answer.ended);
    EXPECT_LT(answer.text.size(), 2048);
}

} // namespace
} // namespace wivex::doctor
