// External programs, run through the system shell.
#pragma once

#include "base/descriptor.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <sys/types.h>

enum class CommandEnd {
    exited,      // by itself
    killed,      // by a signal that was none of ours
    cancelled,   // because we would wait no longer
    timed_out,   // because its time was up
    not_started, // the system had no room for another process
};

struct CommandOutcome {
    CommandEnd end = CommandEnd::not_started;
    int number = 0; // the exit status, the signal, or the system's error

    // Whether it came to its own end, be that a success or not.
    bool ended_by_itself() const { return end == CommandEnd::exited || end == CommandEnd::killed; }
    bool succeeded() const { return end == CommandEnd::exited && number == 0; }
};

// What became of it, for a person: "ended with status 3", "ended by signal 9", "cancelled" ...
std::string in_words(const CommandOutcome& outcome);

// A command line that runs while the program goes on. It reads nothing (its input is empty), writes where the program
// writes, and has none of the program's files. Whatever it has started ends with it when it is cancelled, when this
// object goes, and when the program itself dies; what it leaves running after it has ended by itself stays.
class Command {
public:
    explicit Command(const std::string& command_line);
    ~Command();
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    // What became of it; nothing while it runs. Never waits.
    std::optional<CommandOutcome> outcome();
    // Becomes readable when there is an outcome; -1 when it was not started.
    int descriptor() const { return told_.number(); }
    // Ends it and all that it started, first with a request that they may answer for a moment. Does nothing when it has
    // ended by itself. What is stuck in the system for longer is left to end when it can.
    CommandOutcome cancel(CommandEnd why = CommandEnd::cancelled);

private:
    void take_outcome();

    pid_t keeper_ = -1;
    Descriptor told_; // the keeper writes how the command ended
    std::optional<CommandOutcome> outcome_;
};

// Runs the command line until it ends, until `go_on`, which is asked some fifty times a second, says no, or until its
// time is up; in the last two cases it is cancelled.
CommandOutcome run_command(const std::string& command_line, const std::function<bool()>& go_on = {},
                           std::optional<std::chrono::milliseconds> limit = {});

// The same for what a person waits for, `what` it is ("the unpacker") in words: by run_command, or by what a program
// with a window puts in its place.
CommandOutcome run_external_program(const std::string& command_line, const std::string& what,
                                    std::optional<std::chrono::milliseconds> limit = {});
using ProgramRunner = CommandOutcome (*)(const std::string& command_line, const std::string& what,
                                         std::optional<std::chrono::milliseconds> limit);
// Null: run_command again.
void use_program_runner(ProgramRunner runner);

// The argument quoted so that the shell takes it as one word, whatever it holds; one that begins with "-" is made a
// path.
std::string shell_quoted(const std::string& argument);
