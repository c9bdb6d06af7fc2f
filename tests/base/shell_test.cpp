#include "base/shell.h"

#include "support/child_process.h"
#include "support/text_file.h"

#include <cerrno>
#include <csignal>
#include <gtest/gtest.h>
#include <thread>

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

class Shell : public testing::Test {
protected:
    TemporaryDirectory directory;
    CurrentDirectory inside{directory.path()};
};

bool soon(const std::function<bool()>& condition) {
    const Clock::time_point end = Clock::now() + std::chrono::seconds{20};
    while (!condition()) {
        if (Clock::now() > end) return false;
        std::this_thread::sleep_for(milliseconds{2});
    }
    return true;
}

bool has_line(const std::string& file) { return std::filesystem::exists(file) && read_text(file).ends_with('\n'); }

// A process that is gone, or dead and only not yet asked for.
bool is_gone(pid_t process) {
    if (::kill(process, 0) != 0) return true;
    std::ifstream status("/proc/" + std::to_string(process) + "/stat");
    std::string line;
    try { // the process may go between the opening and the reading, which the stream tells by throwing
        return !std::getline(status, line) || line.find(") Z ") != std::string::npos;
    } catch (const std::exception&) {
        return true;
    }
}

// Whether it is gone; one that is not is ended here.
bool was_ended(pid_t process) {
    const bool gone = is_gone(process);
    if (!gone) ::kill(process, SIGKILL);
    return gone;
}

pid_t process_in(const std::string& file) { return std::stoi(read_text(file)); }

// Commands that write their process's number into the file "id" and then never end.
const std::string endless_commands[] = {
    "echo $$ > id; exec sleep 300",
    "trap '' TERM INT HUP; echo $$ > id; while :; do sleep 1; done",
    "sh -c 'echo $$ > id; exec sleep 300' & sleep 300",
    "setsid sh -c 'echo $$ > id; trap \"\" TERM; while :; do sleep 1; done' & sleep 300",
    "(setsid sh -c 'setsid sh -c \"echo \\$\\$ > id; exec sleep 300\" &' &) ; sleep 300",
};

} // namespace

TEST_F(Shell, TheCommandIsWaitedForAndItsOutcomeReturned) {
    const CommandOutcome three = run_command("exit 3");
    EXPECT_EQ(three.end, CommandEnd::exited);
    EXPECT_EQ(three.number, 3);
    EXPECT_FALSE(three.succeeded());
    EXPECT_TRUE(run_command("true").succeeded());
    const CommandOutcome killed = run_command("kill -9 $$");
    EXPECT_EQ(killed.end, CommandEnd::killed);
    EXPECT_EQ(killed.number, SIGKILL);
    EXPECT_EQ(run_command("/nowhere/program 2>/dev/null").number, 127);
}

// Every name must reach the command as one argument, unchanged, and run nothing of its own.
TEST_F(Shell, NoSpellingOfANameLeavesItsQuotes) {
    const std::string told = directory / "told";
    for (const std::string name : {"plain", "two words", "it's", "a\"b", "$(touch x)", "`id`", "a;b", "a\nb", "*", "\\",
                                   "'; exit 9 #", "\xE4\xFF"}) {
        ASSERT_TRUE(run_command("printf %s " + shell_quoted(name) + " > " + shell_quoted(told)).succeeded()) << name;
        EXPECT_EQ(read_text(told), name);
    }
}

TEST_F(Shell, ANameThatLooksLikeAnOptionBecomesAPath) { EXPECT_EQ(shell_quoted("-rf"), "'./-rf'"); }

TEST_F(Shell, TheProgramGoesOnWhileTheCommandRuns) {
    ASSERT_EQ(::mkfifo("go", 0600), 0);
    Command command("read line < go; exit $line");
    EXPECT_FALSE(command.outcome());
    std::ofstream("go") << "7\n";
    ASSERT_TRUE(soon([&] { return command.outcome().has_value(); }));
    EXPECT_EQ(command.outcome()->number, 7);
    EXPECT_EQ(command.cancel().end, CommandEnd::exited) << "what has ended by itself is not cancelled any more";
}

TEST_F(Shell, CancellingEndsAllThatTheCommandStarted) {
    for (const std::string& line : endless_commands) {
        std::filesystem::remove("id");
        Command command(line);
        ASSERT_TRUE(soon([] { return has_line("id"); })) << line;
        const pid_t process = process_in("id");
        ASSERT_FALSE(is_gone(process)) << line;
        EXPECT_EQ(command.cancel().end, CommandEnd::cancelled);
        EXPECT_TRUE(was_ended(process)) << line;
        EXPECT_EQ(command.outcome()->end, CommandEnd::cancelled);
    }
}

TEST_F(Shell, ACommandMayAnswerTheRequestToEnd) {
    Command command("trap 'echo tidied > id; exit' TERM; echo ready > ready; while :; do sleep 0.01; done");
    ASSERT_TRUE(soon([] { return has_line("ready"); }));
    command.cancel();
    EXPECT_EQ(read_text("id"), "tidied\n");
}

TEST_F(Shell, WhatIsStillRunningEndsWithTheObject) {
    {
        const Command command(endless_commands[3]);
        ASSERT_TRUE(soon([] { return has_line("id"); }));
    }
    EXPECT_TRUE(was_ended(process_in("id")));
}

TEST_F(Shell, WhatIsStillRunningEndsWithTheProgram) {
    for (const std::string& line : endless_commands) {
        std::filesystem::remove("id");
        const pid_t program = start_child([&]() -> int {
            const Command command(line);
            for (;;)
                ::pause();
        });
        ASSERT_TRUE(soon([] { return has_line("id"); })) << line;
        ::kill(program, SIGKILL);
        wait_for(program);
        const pid_t process = process_in("id");
        soon([&] { return is_gone(process); });
        EXPECT_TRUE(was_ended(process)) << line;
    }
}

TEST_F(Shell, WhatACommandLeavesRunningWhenItEndsByItselfStays) {
    EXPECT_TRUE(
        run_command(
            "setsid sh -c 'echo $$ > id; exec sleep 300' > /dev/null 2>&1 & while [ ! -s id ]; do sleep 0.01; done")
            .succeeded());
    const pid_t process = process_in("id");
    EXPECT_FALSE(is_gone(process));
    ::kill(process, SIGKILL);
}

TEST_F(Shell, TheCallerIsAskedWhetherToGoOn) {
    int asked = 0;
    const CommandOutcome outcome = run_command(endless_commands[0], [&] { return ++asked < 4; });
    EXPECT_EQ(outcome.end, CommandEnd::cancelled);
    EXPECT_EQ(asked, 4);
    EXPECT_FALSE(outcome.succeeded());
    EXPECT_TRUE(run_command("sleep 0.1", [&] { return ++asked > 0; }).succeeded());
    EXPECT_GT(asked, 5);
}

TEST_F(Shell, ACommandHasItsTimeAndNoMore) {
    const Clock::time_point start = Clock::now();
    EXPECT_EQ(run_command("exec sleep 300", {}, milliseconds{50}).end, CommandEnd::timed_out);
    EXPECT_GE(Clock::now() - start, milliseconds{50});
    EXPECT_LT(Clock::now() - start, std::chrono::seconds{20});
    EXPECT_TRUE(run_command("true", {}, std::chrono::seconds{60}).succeeded());
}

// No input, no file of the program's, no signal held back, and the signals of the terminal go past it.
TEST_F(Shell, TheCommandHasNothingOfTheProgramsButItsOutput) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    ASSERT_TRUE(run_command("read line; echo \"line:$line\" > input; ls /proc/self/fd > files;"
                            "grep SigBlk /proc/self/status > mask; cut -d' ' -f5 /proc/self/stat > group")
                    .succeeded());
    EXPECT_EQ(read_text("input"), "line:\n");
    EXPECT_EQ(read_text("files"), "0\n1\n2\n3\n") << "3 is the folder that is listed";
    EXPECT_EQ(read_text("mask"), "SigBlk:\t0000000000000000\n");
    EXPECT_NE(std::stoi(read_text("group")), ::getpgrp());
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST_F(Shell, WithoutRoomForAProcessThereIsAnOutcomeToo) {
    EXPECT_EQ(run_as_ordinary_user([] {
                  const rlimit none{0, 0};
                  if (::setrlimit(RLIMIT_NPROC, &none) != 0) return 1;
                  const CommandOutcome outcome = run_command("true");
                  return outcome.end == CommandEnd::not_started && outcome.number == EAGAIN ? 0 : 2;
              }),
              0);
}
