#include "window/event_wait.h"

#include "window/termination.h"

#include <SDL.h>
#include <SDL_syswm.h>
#include <poll.h>

namespace {

// The connection on which events of this window arrive; -1 where it is not known.
int event_connection(SDL_Window* window) {
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (!SDL_GetWindowWMInfo(window, &info) || info.subsystem != SDL_SYSWM_X11) return -1;
    return ConnectionNumber(info.info.x11.display);
}

// Where only the library knows how to wait, a signal is seen this late at most.
constexpr int longest_library_wait = 250;

bool within_library_wait(int milliseconds) { return milliseconds >= 0 && milliseconds < longest_library_wait; }

} // namespace

void wait_for_event(SDL_Window* window, int milliseconds) {
    const int connection = event_connection(window);
    if (connection < 0) {
        SDL_WaitEventTimeout(nullptr, within_library_wait(milliseconds) ? milliseconds : longest_library_wait);
        return;
    }
    // Sends what is to be sent, and takes what has arrived already: the connection would not tell of it.
    SDL_PumpEvents();
    if (SDL_HasEvents(SDL_FIRSTEVENT, SDL_LASTEVENT)) return;
    pollfd sources[] = {{connection, POLLIN, 0}, {termination_descriptor(), POLLIN, 0}};
    ::poll(sources, 2, milliseconds);
}
