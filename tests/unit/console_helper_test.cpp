// SPDX-License-Identifier: Apache-2.0
#include "children.hpp"
#include "common/console.hpp"
#include "common/console_helper.hpp"
#include "common/interrupts.hpp"
#include "disk_file.hpp"
#include "pipe.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

namespace wivex {
namespace {

using namespace test_support;

constexpr std::chrono::seconds limit{5};
constexpr int patience_ms = 5000;

/// What is true of the helper, in words.
std::string state() {
    return std::string(console_helper::serves(STDOUT_FILENO) ? "out, " : "") +
           (console_helper::serves(STDERR_FILENO) ? "err, " : "") +
           (console_helper::busy() ? "busy, " : "") +
           (console_helper::descriptor() == -1 ? "no helper" : "a helper");
}

pid_t only_child() {
    pid_t child = -1;
    std::ifstream("/proc/thread-self/children") >> child;
    return child;
}

/// Ends or stops the helper with a signal.
void strike_helper(int signal) {
    const pid_t helper = only_child();
    if (helper > 1) {
        kill(helper, signal);
        waitpid(helper, nullptr, WUNTRACED);
    }
}

/// Waits for the helper's word and takes it.
void await_word() {
    pollfd word{console_helper::descriptor(), POLLIN, 0};
    poll(&word, 1, patience_ms);
    console_helper::take_word();
}

void ignore_signal(int /*signal*/) {}

/// The streams of a run: the null device where no number is given.
struct Streams {
    int out = -1;
    int err = -1;
    int in = -1;
};

void take(int stream, int fd) {
    const UniqueFd null(open("/dev/null", O_RDWR | O_CLOEXEC));
    dup2(fd < 0 ? null.get() : fd, stream);
}

/// What `body` tells in a run of its own with these streams; "-1" when it comes to no end.
std::string told_by_run(const Streams& streams, const std::function<std::string()>& body) {
    const UniqueFd told(memfd_create("told", MFD_CLOEXEC));
    const int child = fork_child([&] {
        take(STDIN_FILENO, streams.in);
        take(STDOUT_FILENO, streams.out);
        take(STDERR_FILENO, streams.err);
        const std::string text = body();
        return write(told.get(), text.data(), text.size()) < 0 ? 1 : 0;
    });
    const int end = end_of_child(child, limit);
    return end == 0 ? content_of(told.get()) : std::to_string(end);
}

/// What is true of the helper right after its start.
std::string state_at_start(const Streams& streams) {
    return told_by_run(streams, [] {
        console_helper::start();
        return state() + (only_child() == -1 ? "" : ", a child");
    });
}

TEST(NoConsoleHelper, is_there_before_its_start) {
    EXPECT_EQ(told_by_run({}, state), "no helper");
}

TEST(NoConsoleHelper, is_asked_for_a_file_in_memory) {
    const UniqueFd file(memfd_create("console", MFD_CLOEXEC));
    EXPECT_EQ(state_at_start({file.get(), file.get()}), "no helper");
}

TEST(NoConsoleHelper, is_asked_for_a_device) {
    const UniqueFd null(open("/dev/null", O_WRONLY | O_CLOEXEC));
    EXPECT_EQ(state_at_start({null.get(), null.get()}), "no helper");
}

TEST(NoConsoleHelper, is_asked_for_a_pipe) {
    const Pipe pipe;
    EXPECT_EQ(state_at_start({pipe.writer(), pipe.writer()}), "no helper");
}

TEST(NoConsoleHelper, is_asked_for_streams_that_are_closed) {
    EXPECT_EQ(told_by_run({},
                          [] {
                              close(STDOUT_FILENO);
                              close(STDERR_FILENO);
                              console_helper::start();
                              return state();
                          }),
              "no helper");
}

class ConsoleHelper : public testing::Test {
protected:
    void SetUp() override {
        if (!file_.may_hang() || !other_file_.may_hang()) {
            GTEST_SKIP() << "the test program stands in memory";
        }
    }

    /// What `body` tells in a run whose standard output the helper writes to the file.
    std::string told_with_helper(const std::function<std::string()>& body) const {
        return told_by_run({file_.fd()}, [&body] {
            console_helper::start();
            return body();
        });
    }

    DiskFile file_;
    DiskFile other_file_;
};

TEST_F(ConsoleHelper, is_asked_for_each_stream_that_is_a_file_on_a_disk) {
    EXPECT_EQ(state_at_start({file_.fd()}), "out, a helper, a child");
    EXPECT_EQ(state_at_start({-1, file_.fd()}), "err, a helper, a child");
    EXPECT_EQ(state_at_start({file_.fd(), file_.fd()}), "out, err, a helper, a child");
}

TEST_F(ConsoleHelper, is_not_asked_for_standard_input) {
    EXPECT_EQ(state_at_start({-1, -1, file_.fd()}), "no helper");
}

TEST_F(ConsoleHelper, is_busy_until_its_word_is_taken) {
    EXPECT_EQ(told_with_helper([] {
                  std::string told = state();
                  console_helper::send(STDOUT_FILENO, "text");
                  told += "; " + state();
                  await_word();
                  return told + "; " + state();
              }),
              "out, a helper; out, busy, a helper; out, a helper");
}

TEST_F(ConsoleHelper, writes_one_text_after_the_other) {
    EXPECT_EQ(told_with_helper([] {
                  for (const char* text : {"one", ", two", ", three"}) {
                      if (!console_helper::send(STDOUT_FILENO, text)) {
                          return std::string("not sent");
                      }
                      await_word();
                  }
                  return state();
              }),
              "out, a helper");
    EXPECT_EQ(file_.content(), "one, two, three");
}

TEST_F(ConsoleHelper, writes_the_longest_text_whole) {
    const std::string text = std::string(4095, 'x') + "y";
    told_with_helper([&text] {
        console_helper::send(STDOUT_FILENO, text);
        await_word();
        return state();
    });
    EXPECT_EQ(file_.content(), text);
}

TEST_F(ConsoleHelper, writes_to_the_stream_that_it_is_told) {
    told_by_run({file_.fd(), other_file_.fd()}, [] {
        console_helper::start();
        console_helper::send(STDERR_FILENO, "a problem");
        await_word();
        console_helper::send(STDOUT_FILENO, "a line");
        await_word();
        return state();
    });
    EXPECT_EQ(file_.content(), "a line");
    EXPECT_EQ(other_file_.content(), "a problem");
}

TEST_F(ConsoleHelper, drops_a_text_that_its_file_does_not_take) {
    const UniqueFd read_only(file_.open_again(O_RDONLY));
    EXPECT_EQ(told_by_run({read_only.get(), other_file_.fd()},
                          [] {
                              console_helper::start();
                              console_helper::send(STDOUT_FILENO, "lost");
                              await_word();
                              console_helper::send(STDERR_FILENO, "kept");
                              await_word();
                              return state();
                          }),
              "out, err, a helper");
    EXPECT_EQ(other_file_.content(), "kept");
}

TEST_F(ConsoleHelper, stays_busy_while_it_has_said_nothing) {
    EXPECT_EQ(told_with_helper([] {
                  strike_helper(SIGSTOP);
                  console_helper::send(STDOUT_FILENO, "text");
                  console_helper::take_word();
                  std::string told = state();
                  kill(only_child(), SIGCONT);
                  await_word();
                  return told + "; " + state();
              }),
              "out, busy, a helper; out, a helper");
    EXPECT_EQ(file_.content(), "text");
}

TEST_F(ConsoleHelper, that_was_killed_over_a_text_serves_no_stream_any_more) {
    EXPECT_EQ(told_by_run({file_.fd(), other_file_.fd()},
                          [] {
                              console_helper::start();
                              strike_helper(SIGSTOP);
                              console_helper::send(STDERR_FILENO, "text");
                              strike_helper(SIGKILL);
                              console_helper::take_word();
                              return state();
                          }),
              "no helper");
}

TEST_F(ConsoleHelper, that_was_killed_in_its_rest_serves_no_stream_any_more) {
    EXPECT_EQ(told_by_run({file_.fd(), other_file_.fd()},
                          [] {
                              console_helper::start();
                              strike_helper(SIGKILL);
                              const bool sent = console_helper::send(STDOUT_FILENO, "text");
                              return state() + (sent ? ", sent" : "");
                          }),
              "no helper");
}

TEST_F(ConsoleHelper, that_ended_by_itself_serves_no_stream_any_more) {
    EXPECT_EQ(told_with_helper([] {
                  console_helper::send(STDOUT_FILENO, "text");
                  await_word();
                  strike_helper(SIGKILL);
                  console_helper::take_word();
                  return state();
              }),
              "no helper");
}

TEST_F(ConsoleHelper, that_was_killed_leaves_the_next_line_whole) {
    EXPECT_EQ(told_by_run({file_.fd()},
                          [] {
                              install_interrupt_handler(ignore_signal);
                              shield_from_hanging_files();
                              print_out("one line\n");
                              flush_out();
                              strike_helper(SIGKILL);
                              print_out("another line\n");
                              flush_out();
                              return state();
                          }),
              "no helper");
    EXPECT_EQ(file_.content(), "one line\nanother line\n");
}

TEST_F(ConsoleHelper, has_written_all_when_a_line_on_standard_error_was_flushed) {
    EXPECT_EQ(told_by_run({-1, file_.fd()},
                          [] {
                              shield_from_hanging_files();
                              print_err("a problem\n");
                              flush_out();
                              return state();
                          }),
              "err, a helper");
    EXPECT_EQ(file_.content(), "a problem\n");
}

TEST_F(ConsoleHelper, that_cannot_be_started_is_done_without) {
    const UniqueFd told(memfd_create("told", MFD_CLOEXEC));
    const auto print = [&] {
        take(STDOUT_FILENO, file_.fd());
        shield_from_hanging_files();
        const std::string text = state();
        print_out("a line\n");
        return write(told.get(), text.data(), text.size()) < 0 ? 1 : 0;
    };
    EXPECT_EQ(without_processes(print), 0);
    EXPECT_EQ(content_of(told.get()), "no helper");
    EXPECT_EQ(file_.content(), "a line\n");
}

TEST_F(ConsoleHelper, that_cannot_be_reached_is_not_started) {
    EXPECT_EQ(told_by_run({file_.fd()},
                          [] {
                              rlimit files{};
                              getrlimit(RLIMIT_NOFILE, &files);
                              const rlimit none{3, files.rlim_max};
                              setrlimit(RLIMIT_NOFILE, &none);
                              console_helper::start();
                              setrlimit(RLIMIT_NOFILE, &files);
                              return state() + (only_child() == -1 ? "" : ", a child");
                          }),
              "no helper");
}

/// How many descriptors of a process are of this kind.
int descriptors(pid_t process, const std::string& kind) {
    int count = 0;
    const std::string folder = "/proc/" + std::to_string(process) + "/fd";
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::error_code gone;
        if (std::filesystem::read_symlink(entry, gone).string().starts_with(kind)) {
            ++count;
        }
    }
    return count;
}

TEST_F(ConsoleHelper, has_a_name_of_its_own) {
    EXPECT_EQ(told_with_helper([] {
                  console_helper::send(STDOUT_FILENO, "text");
                  await_word();
                  std::string name;
                  std::ifstream("/proc/" + std::to_string(only_child()) + "/comm") >> name;
                  return name;
              }),
              "wivex-console");
}

TEST_F(ConsoleHelper, keeps_only_its_end_and_the_streams_that_it_serves) {
    const Pipe pipe;
    EXPECT_EQ(told_by_run({file_.fd(), pipe.writer(), pipe.reader()},
                          [] {
                              console_helper::start();
                              console_helper::send(STDOUT_FILENO, "text");
                              await_word();
                              const pid_t helper = only_child();
                              const auto less = [helper](const std::string& kind) {
                                  return std::to_string(descriptors(getpid(), kind) -
                                                        descriptors(helper, kind));
                              };
                              return less("pipe:") + " pipes and " + less("socket:") +
                                     " sockets less than the run";
                          }),
              "2 pipes and 0 sockets less than the run");
}

TEST_F(ConsoleHelper, ends_with_a_run_that_is_killed_though_it_is_stuck) {
    const UniqueFd told(memfd_create("told", MFD_CLOEXEC));
    const Gate ready;
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    const int run = fork_child([&] {
        take(STDOUT_FILENO, file_.fd());
        console_helper::start();
        console_helper::send(STDOUT_FILENO, "text");
        await_word();
        strike_helper(SIGSTOP);
        dprintf(told.get(), "%d", only_child());
        ready.open();
        pause();
        return 0;
    });
    ready.wait();
    kill(run, SIGKILL);
    EXPECT_EQ(end_of_child(run, limit), 128 + SIGKILL);
    EXPECT_EQ(end_of_child(std::stoi(content_of(told.get())), limit), 128 + SIGKILL);
    prctl(PR_SET_CHILD_SUBREAPER, 0);
}

} // namespace
} // namespace wivex
