// The keeper is a copy of the program without its threads: it may call what a signal handler may, and nothing else.
#include "base/command_keeper.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <limits>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int told_at = 3; // behind standard input, output and error
constexpr int shell_not_found = 127;
constexpr timespec politeness{0, 300'000'000}; // what a request to end may take before force,
constexpr int most_orphans = 10;               // unless this many others end meanwhile

sigset_t set_of(int first, int second = 0) {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, first);
    if (second != 0) sigaddset(&set, second);
    return set;
}

[[noreturn]] void become_shell(const char* command_line, const sigset_t& mask) {
    ::setpgid(0, 0);
    ::sigprocmask(SIG_SETMASK, &mask, nullptr);
    ::execl("/bin/sh", "sh", "-c", command_line, nullptr);
    ::_exit(shell_not_found);
}

// The program's files are its own: a pipe or a connection that stayed open here would not close when it should.
void keep_only_the_standard_files(int tell) {
    const int nothing = ::open("/dev/null", O_RDWR);
    ::dup2(nothing, STDIN_FILENO);
    ::dup2(tell, told_at);
    ::fcntl(told_at, F_SETFD, FD_CLOEXEC);
    ::close_range(told_at + 1, std::numeric_limits<unsigned>::max(), 0);
}

// Forgets the children that have ended. Whether the shell was among them, with its wait status.
bool forget_ended_children(pid_t shell, int& shell_status) {
    bool shell_ended = false;
    int status = 0;
    for (pid_t child = 0; (child = ::waitpid(-1, &status, WNOHANG)) > 0;) {
        if (child != shell) continue;
        shell_ended = true;
        shell_status = status;
    }
    return shell_ended;
}

// The first child that the list of the system names; 0 when there is none, -1 when there is no such list.
pid_t first_child() {
    const int list = ::open("/proc/thread-self/children", O_RDONLY | O_CLOEXEC);
    if (list < 0) return -1;
    char digits[16] = {};
    const ssize_t length = ::read(list, digits, sizeof digits - 1);
    ::close(list);
    pid_t child = 0;
    for (ssize_t i = 0; i < length && digits[i] >= '0' && digits[i] <= '9'; ++i)
        child = child * 10 + (digits[i] - '0');
    return child;
}

// Whoever loses its parent becomes the keeper's child, so that in the end all of them stand in its list.
void kill_everything(pid_t shell) {
    ::kill(-shell, SIGKILL);
    for (pid_t child = first_child(); child > 0; child = first_child()) {
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
    }
}

void end_everything(pid_t shell, bool shell_runs) {
    const sigset_t child = set_of(SIGCHLD);
    ::kill(-shell, SIGTERM);
    int status = 0;
    for (int orphans = 0; shell_runs && orphans < most_orphans; ++orphans) {
        if (::sigtimedwait(&child, nullptr, &politeness) != SIGCHLD) break;
        shell_runs = !forget_ended_children(shell, status);
    }
    kill_everything(shell);
}

[[noreturn]] void keep(const char* command_line, int tell, pid_t program, const sigset_t& mask) {
    std::signal(SIGCHLD, SIG_DFL); // where it is ignored, no child can be waited for
    ::setpgid(0, 0);
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != program) ::_exit(EXIT_FAILURE); // it died before it could be noticed
    keep_only_the_standard_files(tell);

    const pid_t shell = ::fork();
    if (shell == 0) become_shell(command_line, mask);
    if (shell < 0) {
        const int error = -errno;
        [[maybe_unused]] const ssize_t written = ::write(told_at, &error, sizeof error);
        ::_exit(EXIT_FAILURE);
    }
    ::setpgid(shell, shell);
    const sigset_t awaited = set_of(SIGTERM, SIGCHLD);
    for (;;) {
        const int signal = ::sigwaitinfo(&awaited, nullptr);
        int status = 0;
        const bool ended = forget_ended_children(shell, status);
        if (ended) {
            [[maybe_unused]] const ssize_t written = ::write(told_at, &status, sizeof status);
        }
        if (signal == SIGTERM) end_everything(shell, !ended);
        if (ended || signal == SIGTERM) ::_exit(EXIT_SUCCESS);
    }
}

} // namespace

pid_t start_command_keeper(const char* command_line, int tell) {
    sigset_t all, before;
    sigfillset(&all);
    ::sigprocmask(SIG_SETMASK, &all, &before); // no handler of the program runs in its copy
    const pid_t program = ::getpid();
    const pid_t keeper = ::fork();
    if (keeper == 0) keep(command_line, tell, program, before);
    const int error = errno;
    ::sigprocmask(SIG_SETMASK, &before, nullptr);
    errno = error;
    return keeper;
}
