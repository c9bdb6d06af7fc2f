#include "window/key_translation.h"

#include "base/code_page.h"
#include "base/utf8.h"
#include "window/key_strings.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace {

// Keys that mean the same with Shift, Control or without.
constexpr std::pair<Key, const char*> named_keys[] = {
    {Key::escape, key::escape},
    {Key::enter, key::enter},
    {Key::keypad_enter, key::enter},
    {Key::home, key::home},
    {Key::up, key::up},
    {Key::page_up, key::page_up},
    {Key::left, key::left},
    {Key::right, key::right},
    {Key::end, key::end},
    {Key::down, key::down},
    {Key::page_down, key::page_down},
    {Key::insert, key::insert},
    {Key::delete_, key::delete_},
    {Key::backspace, key::backspace},
};

// What the keypad's keys are while they are not digits.
constexpr std::pair<Key, Key> keypad_meanings[] = {
    {Key::keypad_0, Key::insert},    {Key::keypad_1, Key::end},          {Key::keypad_2, Key::down},
    {Key::keypad_3, Key::page_down}, {Key::keypad_4, Key::left},         {Key::keypad_5, Key::other},
    {Key::keypad_6, Key::right},     {Key::keypad_7, Key::home},         {Key::keypad_8, Key::up},
    {Key::keypad_9, Key::page_up},   {Key::keypad_period, Key::delete_},
};

template <class From, class To, std::size_t N>
std::optional<To> look_up(const std::pair<From, To> (&table)[N], From wanted) {
    const auto found =
        std::find_if(std::begin(table), std::end(table), [&](const auto& row) { return row.first == wanted; });
    if (found == std::end(table)) return std::nullopt;
    return found->second;
}

// With Num Lock the keypad's digits arrive as text; Shift turns Num Lock round.
Key meaning(Key key, const Modifiers& modifiers) {
    const std::optional<Key> on_keypad = look_up(keypad_meanings, key);
    if (!on_keypad) return key;
    return modifiers.num_lock == modifiers.shift ? *on_keypad : Key::other;
}

int number_of(Key key, Key first) { return static_cast<int>(key) - static_cast<int>(first); }

std::string extended(int scancode) { return {'\xFF', static_cast<char>(scancode)}; }

constexpr int scancode_f1 = 59, scancode_f11 = 133;

std::string function_key(Key key) {
    if (key >= Key::f11) return extended(scancode_f11 + number_of(key, Key::f11));
    return extended(scancode_f1 + number_of(key, Key::f1));
}

std::string key_down_string(const InputEvent& event) {
    const Modifiers& modifiers = event.modifiers;
    if (modifiers.alt) return {};
    const Key key = meaning(event.key, modifiers);
    if (key >= Key::a && key <= Key::z)
        return modifiers.control ? key::control(static_cast<char>('A' + number_of(key, Key::a))) : std::string{};
    if (key >= Key::f1 && key <= Key::f12) return function_key(key);
    if (key == Key::tab) return modifiers.shift ? key::shift_tab : key::tab;
    const std::optional<const char*> named = look_up(named_keys, key);
    return named ? *named : std::string{};
}

// One key a character. Character 255 begins the strings of the extended keys and is therefore never typed.
std::vector<std::string> text_keys(std::string_view text) {
    std::vector<std::string> keys;
    for (std::size_t at = 0; at < text.size();) {
        const auto [code, length] = utf8_character_at(text, at);
        const unsigned char character = code_page_437(code);
        if (character != 0 && character != 0xFF) keys.emplace_back(1, static_cast<char>(character));
        at += length;
    }
    return keys;
}

} // namespace

std::vector<std::string> key_strings(const InputEvent& event) {
    switch (event.kind) {
    case InputEvent::Kind::key_down:
        if (std::string key = key_down_string(event); !key.empty()) return {key};
        return {};
    case InputEvent::Kind::text:
        if (event.modifiers.control || event.modifiers.alt) return {};
        return text_keys(event.text);
    case InputEvent::Kind::close_request: return {key::close_window};
    default: return {};
    }
}
