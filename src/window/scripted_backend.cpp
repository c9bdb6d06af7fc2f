#include "window/scripted_backend.h"

#include "window/key_translation.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace {

// Waits that an action is followed by before the next step: the program passes a few times over what it changed.
constexpr int waits_after_action = 8;
// A program that asks for more so often after the last step, with the close request unread, will never end.
constexpr int longest_overrun = 1000;

} // namespace

void ScriptedBackend::play(std::vector<ScriptStep> steps) {
    steps_.assign(std::make_move_iterator(steps.begin()), std::make_move_iterator(steps.end()));
    hungry_ = false;
    settling_ = 0;
    overrun_ = 0;
}

bool ScriptedBackend::open(int width, int height, std::string& error) {
    if (refuse_to_open) {
        error = "the script refuses to open a window";
        return false;
    }
    shown_width_ = width;
    shown_height_ = height;
    shown_.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0);
    return true;
}

void ScriptedBackend::set_title(const std::string& title) { title_ = title; }

void ScriptedBackend::present(const Image& picture, std::span<const Rectangle> changed) {
    ++frames_;
    last_rectangles_.assign(changed.begin(), changed.end());
    last_changed_ = {};
    for (const Rectangle& rectangle : changed) {
        last_changed_ = bounding(last_changed_, rectangle);
        keep(picture, rectangle);
    }
}

void ScriptedBackend::keep(const Image& picture, const Rectangle& changed) {
    const Rectangle kept = intersection(changed, {0, 0, shown_width_ - 1, shown_height_ - 1});
    if (kept.empty()) return;
    const std::size_t left = static_cast<std::size_t>(kept.x1) * 4;
    const std::size_t length = static_cast<std::size_t>(kept.x2 - kept.x1 + 1) * 4;
    for (int y = kept.y1; y <= kept.y2; ++y)
        std::memcpy(&shown_[index_of(kept.x1, y)], picture.row(y).data() + left, length);
}

std::size_t ScriptedBackend::index_of(int x, int y) const {
    if (x < 0 || y < 0 || x >= shown_width_ || y >= shown_height_) return shown_.size();
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(shown_width_) + static_cast<std::size_t>(x);
}

std::uint32_t ScriptedBackend::shown_pixel(int x, int y) const {
    const std::size_t at = index_of(x, y);
    return at < shown_.size() ? shown_[at] : 0;
}

void ScriptedBackend::poll(std::vector<InputEvent>& events) {
    if (!std::exchange(hungry_, false)) return;
    if (steps_.empty()) return overrun(events);
    const ScriptStep step = std::move(steps_.front());
    steps_.pop_front();
    if (step.action) {
        settling_ = waits_after_action;
        step.action();
    }
    events.insert(events.end(), step.events.begin(), step.events.end());
}

void ScriptedBackend::overrun(std::vector<InputEvent>& events) {
    if (++overrun_ > longest_overrun) {
        std::fprintf(stderr, "The script is over, but the program does not end on the close request.\n");
        std::abort();
    }
    InputEvent close;
    close.kind = InputEvent::Kind::close_request;
    events.push_back(close);
}

void ScriptedBackend::wait(int /*milliseconds: a script is never late*/) {
    if (settling_ > 0)
        --settling_;
    else
        hungry_ = true;
}

double ScriptedBackend::seconds() { return clock += tick; }

namespace {

InputEvent mouse_event(InputEvent::Kind kind, int x, int y) {
    InputEvent event;
    event.kind = kind;
    event.x = x;
    event.y = y;
    return event;
}

InputEvent button_event(InputEvent::Kind kind, int x, int y, int button) {
    InputEvent event = mouse_event(kind, x, y);
    event.button = button;
    return event;
}

InputEvent key_event(InputEvent::Kind kind, Key key, Modifiers modifiers = {}) {
    InputEvent event;
    event.kind = kind;
    event.key = key;
    event.modifiers = modifiers;
    return event;
}

InputEvent text_event(std::string text, Modifiers modifiers = {}) {
    InputEvent event;
    event.kind = InputEvent::Kind::text;
    event.text = std::move(text);
    event.modifiers = modifiers;
    return event;
}

// What a keyboard sends as text with a key: letters and the keypad's digits.
std::string text_of(Key key, const Modifiers& modifiers) {
    if (key >= Key::a && key <= Key::z) {
        const char first = modifiers.shift ? 'A' : 'a';
        return {static_cast<char>(first + static_cast<int>(key) - static_cast<int>(Key::a))};
    }
    if (modifiers.num_lock == modifiers.shift) return {};
    if (key >= Key::keypad_0 && key <= Key::keypad_9)
        return {static_cast<char>('0' + static_cast<int>(key) - static_cast<int>(Key::keypad_0))};
    return key == Key::keypad_period ? "." : "";
}

// The keys that are held for these modifiers.
std::vector<Key> qualifier_keys(const Modifiers& modifiers) {
    std::vector<Key> keys;
    if (modifiers.control) keys.push_back(Key::control_left);
    if (modifiers.shift) keys.push_back(Key::shift_left);
    return keys;
}

} // namespace

ScriptStep mouse_at(int x, int y) { return {{mouse_event(InputEvent::Kind::mouse_move, x, y)}, {}}; }

ScriptStep press(int x, int y, int button) { return {{button_event(InputEvent::Kind::button_down, x, y, button)}, {}}; }

ScriptStep release(int x, int y, int button) { return {{button_event(InputEvent::Kind::button_up, x, y, button)}, {}}; }

ScriptStep click(int x, int y, int button) {
    return {{mouse_event(InputEvent::Kind::mouse_move, x, y), button_event(InputEvent::Kind::button_down, x, y, button),
             button_event(InputEvent::Kind::button_up, x, y, button)},
            {}};
}

ScriptStep wheel(int x, int y, int notches) {
    InputEvent event = mouse_event(InputEvent::Kind::wheel, x, y);
    event.wheel = notches;
    return {{event}, {}};
}

ScriptStep typed(const std::string& text) {
    ScriptStep step;
    for (const char character : text)
        step.events.push_back(text_event({character}));
    return step;
}

ScriptStep key_press(Key key, Modifiers modifiers) {
    ScriptStep step;
    const std::vector<Key> qualifiers = qualifier_keys(modifiers);
    for (const Key qualifier : qualifiers)
        step.events.push_back(key_event(InputEvent::Kind::key_down, qualifier));
    step.events.push_back(key_event(InputEvent::Kind::key_down, key, modifiers));
    if (const std::string text = text_of(key, modifiers); !text.empty())
        step.events.push_back(text_event(text, modifiers));
    step.events.push_back(key_event(InputEvent::Kind::key_up, key, modifiers));
    for (const Key qualifier : qualifiers)
        step.events.push_back(key_event(InputEvent::Kind::key_up, qualifier));
    return step;
}

ScriptStep key_down(Key key, Modifiers modifiers) {
    return {{key_event(InputEvent::Kind::key_down, key, modifiers)}, {}};
}

ScriptStep key_up(Key key) { return {{key_event(InputEvent::Kind::key_up, key)}, {}}; }

ScriptStep drop(const std::string& path) {
    InputEvent event;
    event.kind = InputEvent::Kind::file_dropped;
    event.text = path;
    return {.events = {event}};
}

ScriptStep close_window() {
    InputEvent event;
    event.kind = InputEvent::Kind::close_request;
    return {{event}, {}};
}

ScriptStep look(std::function<void()> action) { return {{}, std::move(action)}; }
