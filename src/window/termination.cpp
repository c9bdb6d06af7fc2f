#include "window/termination.h"

#include <csignal>
#include <initializer_list>

namespace {

volatile std::sig_atomic_t asked = 0;

extern "C" void take_note(int /*signal*/) { asked = 1; }

} // namespace

void catch_termination_signals() {
    struct sigaction action = {};
    action.sa_handler = take_note;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGHUP, SIGINT, SIGTERM})
        sigaction(signal, &action, nullptr);
}

bool termination_asked() {
    const bool was_asked = asked != 0;
    asked = 0;
    return was_asked;
}
