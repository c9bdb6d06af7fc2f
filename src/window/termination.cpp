#include "window/termination.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <initializer_list>
#include <unistd.h>

namespace {

// A signal writes into it, the program reads from it.
int pipe_ends[2] = {-1, -1};

extern "C" void take_note(int /*signal*/) {
    const int saved = errno;
    const char note = 1;
    // A full pipe holds enough notes already.
    [[maybe_unused]] const ssize_t written = ::write(pipe_ends[1], &note, 1);
    errno = saved;
}

bool is_ignored(int signal) {
    struct sigaction now = {};
    return ::sigaction(signal, nullptr, &now) == 0 && now.sa_handler == SIG_IGN;
}

} // namespace

void catch_termination_signals() {
    if (pipe_ends[0] < 0 && ::pipe2(pipe_ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
    struct sigaction action = {};
    action.sa_handler = take_note;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGHUP, SIGINT, SIGTERM})
        if (!is_ignored(signal)) sigaction(signal, &action, nullptr);
}

bool termination_asked() {
    bool asked = false;
    char notes[16];
    while (::read(pipe_ends[0], notes, sizeof notes) > 0)
        asked = true;
    return asked;
}

int termination_descriptor() { return pipe_ends[0]; }
