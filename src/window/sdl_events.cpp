#include "window/sdl_events.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <utility>

namespace {

// Unread events from which on mere moves of the mouse are no longer queued.
constexpr int crowded = 10000;

constexpr std::pair<SDL_Keycode, Key> keys_by_meaning[] = {
    {SDLK_ESCAPE, Key::escape},
    {SDLK_RETURN, Key::enter},
    {SDLK_RETURN2, Key::enter},
    {SDLK_BACKSPACE, Key::backspace},
    {SDLK_TAB, Key::tab},
    {SDLK_HOME, Key::home},
    {SDLK_UP, Key::up},
    {SDLK_PAGEUP, Key::page_up},
    {SDLK_LEFT, Key::left},
    {SDLK_RIGHT, Key::right},
    {SDLK_END, Key::end},
    {SDLK_DOWN, Key::down},
    {SDLK_PAGEDOWN, Key::page_down},
    {SDLK_INSERT, Key::insert},
    {SDLK_DELETE, Key::delete_},
    {SDLK_F1, Key::f1},
    {SDLK_F2, Key::f2},
    {SDLK_F3, Key::f3},
    {SDLK_F4, Key::f4},
    {SDLK_F5, Key::f5},
    {SDLK_F6, Key::f6},
    {SDLK_F7, Key::f7},
    {SDLK_F8, Key::f8},
    {SDLK_F9, Key::f9},
    {SDLK_F10, Key::f10},
    {SDLK_F11, Key::f11},
    {SDLK_F12, Key::f12},
    {SDLK_KP_0, Key::keypad_0},
    {SDLK_KP_1, Key::keypad_1},
    {SDLK_KP_2, Key::keypad_2},
    {SDLK_KP_3, Key::keypad_3},
    {SDLK_KP_4, Key::keypad_4},
    {SDLK_KP_5, Key::keypad_5},
    {SDLK_KP_6, Key::keypad_6},
    {SDLK_KP_7, Key::keypad_7},
    {SDLK_KP_8, Key::keypad_8},
    {SDLK_KP_9, Key::keypad_9},
    {SDLK_KP_PERIOD, Key::keypad_period},
    {SDLK_KP_ENTER, Key::keypad_enter},
    {SDLK_LCTRL, Key::control_left},
    {SDLK_RCTRL, Key::control_right},
    {SDLK_LSHIFT, Key::shift_left},
    {SDLK_RSHIFT, Key::shift_right},
};

Key letter(int number) { return static_cast<Key>(static_cast<int>(Key::a) + number); }

// On a layout of another script a letter key has no Latin meaning; its place on the keyboard stands in for it, so that
// Control and a letter work there.
bool has_foreign_meaning(const SDL_Keysym& keysym) {
    return keysym.sym > '~' && (keysym.sym & SDLK_SCANCODE_MASK) == 0;
}

Key key_of(const SDL_Keysym& keysym) {
    if (keysym.sym >= SDLK_a && keysym.sym <= SDLK_z) return letter(keysym.sym - SDLK_a);
    if (has_foreign_meaning(keysym) && keysym.scancode >= SDL_SCANCODE_A && keysym.scancode <= SDL_SCANCODE_Z)
        return letter(keysym.scancode - SDL_SCANCODE_A);
    const auto found = std::find_if(std::begin(keys_by_meaning), std::end(keys_by_meaning),
                                    [&](const auto& row) { return row.first == keysym.sym; });
    return found == std::end(keys_by_meaning) ? Key::other : found->second;
}

// The key with the desktop's logo is for the desktop, as Alt is: what comes with it is no typing.
Modifiers modifiers_of(int state) {
    Modifiers modifiers;
    modifiers.control = (state & KMOD_CTRL) != 0;
    modifiers.shift = (state & KMOD_SHIFT) != 0;
    modifiers.alt = (state & (KMOD_LALT | KMOD_GUI)) != 0;
    return modifiers;
}

// A key's text stands right behind it in the queue.
bool text_follows() {
    SDL_Event next;
    return SDL_PeepEvents(&next, 1, SDL_PEEKEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT) == 1 && next.type == SDL_TEXTINPUT;
}

int button_number(Uint8 button) {
    if (button == SDL_BUTTON_LEFT) return 1;
    return button == SDL_BUTTON_RIGHT ? 2 : 0;
}

} // namespace

void SdlEvents::watch(SDL_Window* window, Size picture) {
    window_ = window;
    picture_ = picture;
    Size points;
    SDL_GetWindowSize(window, &points.width, &points.height);
    measure(points);
    SDL_SetEventFilter(&SdlEvents::admit, this);
    moves_held_back_ = true; // setting the filter threw away what told where the pointer is
}

// On a scaled display a point of the desktop is larger than the window's pixels.
void SdlEvents::measure(Size points) {
    Size newest_points, newest_pixels;
    SDL_GetWindowSize(window_, &newest_points.width, &newest_points.height);
    SDL_GetWindowSizeInPixels(window_, &newest_pixels.width, &newest_pixels.height);
    if (points.width <= 0 || points.height <= 0 || newest_points.width <= 0) return;
    const double density = static_cast<double>(newest_pixels.width) / newest_points.width;
    points_ = points;
    placement_ = place_picture(picture_, {static_cast<int>(std::lround(points.width * density)),
                                          static_cast<int>(std::lround(points.height * density))});
}

int SdlEvents::admit(void* self, SDL_Event* event) {
    auto& events = *static_cast<SdlEvents*>(self);
    if (event->type == SDL_MOUSEMOTION && event->motion.state == 0 && events.waiting_events_ > crowded) {
        events.moves_held_back_ = true;
        return 0;
    }
    ++events.waiting_events_;
    return 1;
}

void SdlEvents::translate(const SDL_Event& event, std::vector<InputEvent>& events) {
    switch (event.type) {
    case SDL_KEYDOWN:
    case SDL_KEYUP: return key(event.key, events);
    case SDL_TEXTINPUT: {
        InputEvent& text = events.emplace_back();
        text.kind = InputEvent::Kind::text;
        text.text = event.text.text;
        text.modifiers = modifiers_;
        return;
    }
    case SDL_MOUSEMOTION:
        x_ = event.motion.x;
        y_ = event.motion.y;
        events.push_back(mouse_event(InputEvent::Kind::mouse_move, x_, y_));
        return;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP: return button(event.button, events);
    case SDL_MOUSEWHEEL:
        events.push_back(mouse_event(InputEvent::Kind::wheel, x_, y_));
        events.back().wheel = event.wheel.y;
        return;
    case SDL_WINDOWEVENT: return window_event(event.window, events);
    case SDL_DROPFILE: {
        InputEvent& dropped = events.emplace_back();
        dropped.kind = InputEvent::Kind::file_dropped;
        dropped.text = event.drop.file ? event.drop.file : "";
        SDL_free(event.drop.file);
        return;
    }
    // The close button of the only window arrives as this too, and as a window event, which is not counted.
    case SDL_QUIT: events.emplace_back().kind = InputEvent::Kind::close_request; return;
    default: return;
    }
}

void SdlEvents::finish(std::vector<InputEvent>& events) {
    waiting_events_ = 0;
    if (std::exchange(moves_held_back_, false)) current_position(events);
}

InputEvent SdlEvents::mouse_event(InputEvent::Kind kind, int x, int y) const {
    InputEvent event;
    event.kind = kind;
    if (x < 0 || y < 0) return event;
    const double pixel_x = (x + 0.5) * placement_.window.width / points_.width;
    const double pixel_y = (y + 0.5) * placement_.window.height / points_.height;
    if (const std::optional<Point> point = picture_point(placement_, pixel_x, pixel_y)) {
        event.x = point->x;
        event.y = point->y;
    }
    return event;
}

void SdlEvents::key(const SDL_KeyboardEvent& event, std::vector<InputEvent>& events) {
    modifiers_ = modifiers_of(event.keysym.mod);
    InputEvent& key = events.emplace_back();
    key.kind = event.type == SDL_KEYDOWN ? InputEvent::Kind::key_down : InputEvent::Kind::key_up;
    key.key = key_of(event.keysym);
    key.modifiers = modifiers_;
    // Whether the keypad gives digits is what its keys do, not what SDL believes of Num Lock, which it counts for
    // itself and may have missed.
    key.modifiers.num_lock = text_follows() != modifiers_.shift;
}

void SdlEvents::button(const SDL_MouseButtonEvent& event, std::vector<InputEvent>& events) {
    const int number = button_number(event.button);
    if (number == 0) return;
    const bool down = event.type == SDL_MOUSEBUTTONDOWN;
    buttons_ = down ? buttons_ | number : buttons_ & ~number;
    x_ = event.x;
    y_ = event.y;
    events.push_back(mouse_event(down ? InputEvent::Kind::button_down : InputEvent::Kind::button_up, event.x, event.y));
    events.back().button = number;
}

void SdlEvents::window_event(const SDL_WindowEvent& event, std::vector<InputEvent>& events) {
    switch (event.event) {
    case SDL_WINDOWEVENT_SIZE_CHANGED: return measure({event.data1, event.data2});
    case SDL_WINDOWEVENT_LEAVE:
        x_ = y_ = -1;
        events.emplace_back().kind = InputEvent::Kind::mouse_move;
        return;
    // No move follows when the pointer comes back where it left. During a stroke every move is reported anyway, and the
    // newest position would come before those still unread.
    case SDL_WINDOWEVENT_ENTER:
        if (buttons_ == 0) current_position(events);
        return;
    case SDL_WINDOWEVENT_FOCUS_LOST:
        modifiers_ = {};
        buttons_ = 0;
        events.emplace_back().kind = InputEvent::Kind::focus_lost;
        return;
    default: return;
    }
}

void SdlEvents::current_position(std::vector<InputEvent>& events) {
    if (SDL_GetMouseFocus() != window_) return;
    SDL_GetMouseState(&x_, &y_);
    events.push_back(mouse_event(InputEvent::Kind::mouse_move, x_, y_));
}
