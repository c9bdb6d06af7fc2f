// Waiting for the next event without waking up in between.
//
// The library's own wait is not used on X11: while it waits, every event makes it send itself one over a second
// connection, which may arrive after the window is gone and then ends the program with an X error.
#pragma once

struct SDL_Window;

// Returns when the library has an event, when a termination signal arrives, or after so many milliseconds (negative:
// without limit). Takes no event away.
void wait_for_event(SDL_Window* window, int milliseconds);
