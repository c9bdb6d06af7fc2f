// The events of SDL as the program's own. With sdl_backend the only file that knows the library.
#pragma once

#include "window/input_event.h"
#include "window/scaling.h"

#include <SDL.h>

#include <vector>

// Takes SDL's events in order and keeps what one event needs of those before it.
class SdlEvents {
public:
    // The events of this window, which shows a picture of this size. From now on SDL's own queue, which holds 65535
    // events, is kept from overflowing by mere moves of the mouse.
    void watch(SDL_Window* window, Size picture);

    // Appends what the event means, often nothing.
    void translate(const SDL_Event& event, std::vector<InputEvent>& events);
    // Called when no event is left: makes up for moves that were held back.
    void finish(std::vector<InputEvent>& events);

private:
    static int admit(void* self, SDL_Event* event);

    // The window has this size, in the points that SDL measures the mouse in.
    void measure(Size points);
    InputEvent mouse_event(InputEvent::Kind kind, int x, int y) const;
    void key(const SDL_KeyboardEvent& event, std::vector<InputEvent>& events);
    void button(const SDL_MouseButtonEvent& event, std::vector<InputEvent>& events);
    void window_event(const SDL_WindowEvent& event, std::vector<InputEvent>& events);
    void current_position(std::vector<InputEvent>& events);

    SDL_Window* window_ = nullptr;
    Size picture_;
    // As they were at the time of the event being translated; SDL itself knows only what is newest.
    Size points_;
    Placement placement_;
    Modifiers modifiers_;
    int buttons_ = 0;
    int x_ = -1, y_ = -1; // where the wheel turns
    int waiting_events_ = 0;
    bool moves_held_back_ = false;
};
