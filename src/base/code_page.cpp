#include "base/code_page.h"

#include "base/utf8.h"

#include <algorithm>
#include <array>
#include <iterator>
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

void append_utf8(std::string& text, char16_t character) {
    const auto byte = [&](int value) { text += static_cast<char>(value); };
    if (character < 0x80) {
        byte(character);
    } else if (character < 0x800) {
        byte(0xC0 | character >> 6);
        byte(0x80 | (character & 0x3F));
    } else {
        byte(0xE0 | character >> 12);
        byte(0x80 | (character >> 6 & 0x3F));
        byte(0x80 | (character & 0x3F));
    }
}

char16_t unicode_of(unsigned char code) {
    if (code < ' ' || code == 127) return u' ';
    return code < 128 ? code : upper_half[code - 128u];
}

} // namespace

unsigned char code_page_437(char32_t character) {
    if (character >= ' ' && character <= '~') return static_cast<unsigned char>(character);
    const auto found = std::find(upper_half.begin(), upper_half.end(), character);
    if (found != upper_half.end()) return static_cast<unsigned char>(128 + (found - upper_half.begin()));
    const auto like = std::find_if(std::begin(look_alikes), std::end(look_alikes),
                                   [&](const auto& pair) { return pair.first == character; });
    return like == std::end(look_alikes) ? static_cast<unsigned char>(0) : like->second;
}

std::string utf8_from_code_page(std::string_view text) {
    std::string result;
    for (const char c : text)
        append_utf8(result, unicode_of(static_cast<unsigned char>(c)));
    return result;
}

std::string code_page_from_utf8(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const auto [code, length] = utf8_character_at(text, at);
        const unsigned char shown = code_page_437(code);
        if (code == 0)
            result += text[at];
        else
            result += shown == 0 ? '?' : static_cast<char>(shown);
        at += length;
    }
    return result;
}
