// The events of SDL as the program's own. With sdl_backend the only file that knows the library.
#pragma once

#include "app/input_event.h"
#include "app/scaling.h"

#include <SDL.h>

#include <vector>

// Takes SDL's events in order and keeps what one event needs of those before it.
class SdlEvents {
public:
    // From now on SDL's own queue, which holds 65535 events, is kept from overflowing by mere moves of the mouse.
    void watch();
    void set_placement(const Placement& placement) { placement_ = placement; }

    // Appends what the event means, often nothing.
    void translate(const SDL_Event& event, SDL_Window* window, std::vector<InputEvent>& events);
    // Called when no event is left: makes up for moves that were held back.
    void finish(SDL_Window* window, std::vector<InputEvent>& events);

private:
    static int admit(void* self, SDL_Event* event);

    InputEvent mouse_event(InputEvent::Kind kind, SDL_Window* window, int x, int y) const;
    void key(const SDL_KeyboardEvent& event, std::vector<InputEvent>& events);
    void button(const SDL_MouseButtonEvent& event, SDL_Window* window, std::vector<InputEvent>& events);
    void window_event(const SDL_WindowEvent& event, SDL_Window* window, std::vector<InputEvent>& events);
    void current_position(SDL_Window* window, std::vector<InputEvent>& events) const;

    Placement placement_;
    // Of the last key event. SDL's own modifier state is that of the newest event, not of the one being translated.
    Modifiers modifiers_;
    int buttons_ = 0;
    int x_ = -1, y_ = -1; // where the wheel turns
    int waiting_events_ = 0;
    bool moves_held_back_ = false;
};
