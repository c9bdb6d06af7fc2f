#include "app/key_translation.h"

#include "app/key_strings.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace {

// The Unicode characters of code page 437's upper half, from 128 on.
constexpr std::array<char16_t, 128> upper_half = {
    0x00C7, 0x00FC, 0x00E9, 0x00E2, 0x00E4, 0x00E0, 0x00E5, 0x00E7, // Çüéâäàåç
    0x00EA, 0x00EB, 0x00E8, 0x00EF, 0x00EE, 0x00EC, 0x00C4, 0x00C5, // êëèïîìÄÅ
    0x00C9, 0x00E6, 0x00C6, 0x00F4, 0x00F6, 0x00F2, 0x00FB, 0x00F9, // ÉæÆôöòûù
    0x00FF, 0x00D6, 0x00DC, 0x00A2, 0x00A3, 0x00A5, 0x20A7, 0x0192, // ÿÖÜ¢£¥₧ƒ
    0x00E1, 0x00ED, 0x00F3, 0x00FA, 0x00F1, 0x00D1, 0x00AA, 0x00BA, // áíóúñÑªº
    0x00BF, 0x2310, 0x00AC, 0x00BD, 0x00BC, 0x00A1, 0x00AB, 0x00BB, // ¿⌐¬½¼¡«»
    0x2591, 0x2592, 0x2593, 0x2502, 0x2524, 0x2561, 0x2562, 0x2556, // ░▒▓│┤╡╢╖
    0x2555, 0x2563, 0x2551, 0x2557, 0x255D, 0x255C, 0x255B, 0x2510, // ╕╣║╗╝╜╛┐
    0x2514, 0x2534, 0x252C, 0x251C, 0x2500, 0x253C, 0x255E, 0x255F, // └┴┬├─┼╞╟
    0x255A, 0x2554, 0x2569, 0x2566, 0x2560, 0x2550, 0x256C, 0x2567, // ╚╔╩╦╠═╬╧
    0x2568, 0x2564, 0x2565, 0x2559, 0x2558, 0x2552, 0x2553, 0x256B, // ╨╤╥╙╘╒╓╫
    0x256A, 0x2518, 0x250C, 0x2588, 0x2584, 0x258C, 0x2590, 0x2580, // ╪┘┌█▄▌▐▀
    0x03B1, 0x00DF, 0x0393, 0x03C0, 0x03A3, 0x03C3, 0x00B5, 0x03C4, // αßΓπΣσµτ
    0x03A6, 0x0398, 0x03A9, 0x03B4, 0x221E, 0x03C6, 0x03B5, 0x2229, // ΦΘΩδ∞φε∩
    0x2261, 0x00B1, 0x2265, 0x2264, 0x2320, 0x2321, 0x00F7, 0x2248, // ≡±≥≤⌠⌡÷≈
    0x00B0, 0x2219, 0x00B7, 0x221A, 0x207F, 0x00B2, 0x25A0, 0x00A0, // °∙·√ⁿ²■
};

// Characters that look the same as one of the page's.
constexpr std::pair<char32_t, unsigned char> look_alikes[] = {
    {0x03B2, 225}, // Greek beta: sharp s
    {0x2211, 228}, // sum: Sigma
    {0x03BC, 230}, // Greek mu: micro
    {0x2126, 234}, // ohm: Omega
    {0x2205, 237}, // empty set: phi
    {0x00F8, 237}, // o with stroke: phi
    {0x2208, 238}, // element of: epsilon
};

// Keys that mean the same with Shift, Control or without.
constexpr std::pair<Key, const std::string*> named_keys[] = {
    {Key::escape, &key::escape},
    {Key::enter, &key::enter},
    {Key::keypad_enter, &key::enter},
    {Key::home, &key::home},
    {Key::up, &key::up},
    {Key::page_up, &key::page_up},
    {Key::left, &key::left},
    {Key::right, &key::right},
    {Key::end, &key::end},
    {Key::down, &key::down},
    {Key::page_down, &key::page_down},
    {Key::insert, &key::insert},
    {Key::delete_, &key::delete_},
    {Key::backspace, &key::backspace},
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
    const std::optional<const std::string*> named = look_up(named_keys, key);
    return named ? **named : std::string{};
}

// The bytes that the first one of a UTF-8 character announces; 0 when none begins with it.
std::size_t utf8_length(unsigned char first) {
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first < 0xE0) return 2;
    if (first >= 0xE0 && first < 0xF0) return 3;
    if (first >= 0xF0 && first < 0xF5) return 4;
    return 0;
}

// Takes the first character off UTF-8 text that is not empty; 0 for a byte that belongs to none.
char32_t take_character(std::string_view& text) {
    const auto first = static_cast<unsigned char>(text[0]);
    const std::size_t length = utf8_length(first);
    char32_t character = length <= 1 ? first : first & (0xFFu >> (length + 1));
    bool whole = length > 0 && length <= text.size();
    for (std::size_t i = 1; whole && i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        whole = (next & 0xC0) == 0x80;
        character = character << 6 | (next & 0x3F);
    }
    text.remove_prefix(whole ? length : 1);
    return whole ? character : 0;
}

// One key a character. Character 255 begins the strings of the extended keys and is therefore never typed.
std::vector<std::string> text_keys(std::string_view text) {
    std::vector<std::string> keys;
    while (!text.empty()) {
        const unsigned char character = code_page_437(take_character(text));
        if (character != 0 && character != 0xFF) keys.emplace_back(1, static_cast<char>(character));
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

unsigned char code_page_437(char32_t character) {
    if (character >= ' ' && character <= '~') return static_cast<unsigned char>(character);
    const auto found = std::find(upper_half.begin(), upper_half.end(), character);
    if (found != upper_half.end()) return static_cast<unsigned char>(128 + (found - upper_half.begin()));
    return look_up(look_alikes, character).value_or(0);
}
