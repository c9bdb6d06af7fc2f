#include "base/shell.h"

#include "base/command_keeper.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds between_questions{20};
constexpr milliseconds patience_with_the_dying{3000};

ProgramRunner runner_in_use = nullptr;

// Waits until something can be read; false when the time is up first.
bool readable_within(int descriptor, milliseconds time) {
    pollfd waiting{.fd = descriptor, .events = POLLIN, .revents = 0};
    return ::poll(&waiting, 1, static_cast<int>(time.count())) > 0;
}

// From what the keeper tells: a wait status, or an error less than 0.
CommandOutcome outcome_of(int told) {
    if (told < 0) return {CommandEnd::not_started, -told};
    if (WIFEXITED(told)) return {CommandEnd::exited, WEXITSTATUS(told)};
    return {CommandEnd::killed, WTERMSIG(told)};
}

} // namespace

std::string in_words(const CommandOutcome& outcome) {
    switch (outcome.end) {
    case CommandEnd::exited: return "ended with status " + std::to_string(outcome.number);
    case CommandEnd::killed: return "ended by signal " + std::to_string(outcome.number);
    case CommandEnd::cancelled: return "cancelled";
    case CommandEnd::timed_out: return "took too long";
    case CommandEnd::not_started: return std::generic_category().message(outcome.number);
    }
    return {};
}

Command::Command(const std::string& command_line) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        outcome_ = {CommandEnd::not_started, errno};
        return;
    }
    told_ = Descriptor(ends[0]);
    const Descriptor tell(ends[1]);
    keeper_ = start_command_keeper(command_line.c_str(), tell.number());
    if (keeper_ >= 0) return;
    outcome_ = {CommandEnd::not_started, errno};
    told_.close();
}

Command::~Command() {
    if (!outcome()) cancel();
}

// The keeper's end of the pipe closes with it, so that there is always something to read in the end.
void Command::take_outcome() {
    int told = SIGKILL; // a keeper that could say nothing was killed itself
    [[maybe_unused]] const ssize_t length = ::read(told_.number(), &told, sizeof told);
    ::waitpid(keeper_, nullptr, 0);
    outcome_ = outcome_of(told);
}

std::optional<CommandOutcome> Command::outcome() {
    if (!outcome_ && readable_within(told_.number(), milliseconds{0})) take_outcome();
    return outcome_;
}

CommandOutcome Command::cancel(CommandEnd why) {
    if (outcome()) return *outcome_;
    ::kill(keeper_, SIGTERM);
    if (readable_within(told_.number(), patience_with_the_dying)) ::waitpid(keeper_, nullptr, 0);
    outcome_ = {why, 0};
    return *outcome_;
}

CommandOutcome run_command(const std::string& command_line, const std::function<bool()>& go_on,
                           std::optional<milliseconds> limit) {
    Command command(command_line);
    const Clock::time_point start = Clock::now();
    for (;;) {
        const auto passed = std::chrono::duration_cast<milliseconds>(Clock::now() - start);
        if (limit && passed >= *limit) return command.cancel(CommandEnd::timed_out);
        readable_within(command.descriptor(),
                        limit ? std::clamp(*limit - passed, milliseconds{1}, between_questions) : between_questions);
        if (const auto outcome = command.outcome()) return *outcome;
        if (go_on && !go_on()) return command.cancel();
    }
}

CommandOutcome run_external_program(const std::string& command_line, const std::string& what,
                                    std::optional<milliseconds> limit) {
    return runner_in_use ? runner_in_use(command_line, what, limit) : run_command(command_line, {}, limit);
}

void use_program_runner(ProgramRunner runner) { runner_in_use = runner; }

std::string shell_quoted(const std::string& argument) {
    std::string quoted = "'";
    if (argument.starts_with('-')) quoted += "./";
    for (const char c : argument) {
        if (c == '\'') {
            quoted += "'\\''";
        } else {
            quoted += c;
        }
    }
    return quoted + "'";
}
