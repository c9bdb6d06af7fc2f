// The colour tables: the game's palette, the materials, the paint-job colour schemes. Colours are 0xAARRGGBB.
#pragma once

#include "base/table.h"

#include <array>
#include <cstdint>

struct MaterialColour {
    std::uint32_t colour = 0;   // alpha always 0xFF once read
    std::uint8_t attribute = 0; // top byte of the stored word, kept aside
};

extern std::array<std::uint32_t, 256> PAL;       // the game's palette
extern std::array<MaterialColour, 256> MATERIAL; // by material number
constexpr int max_colour_schemes = 32;
extern OneBased<std::array<std::uint8_t, 4>, max_colour_schemes> PJCOL; // four materials a scheme, one per shade
extern std::uint8_t PJCOLS;                                             // schemes in use

// Finds the palette index nearest to a colour: always exactly what nearest_palette_entry_by_scan gives, several times
// as fast. Made for a palette, then asked per pixel.
class NearestPaletteEntry {
public:
    explicit NearestPaletteEntry(const std::array<std::uint32_t, 256>& palette);

    std::uint8_t operator()(std::uint32_t colour) const;

private:
    using Plane = std::array<std::int16_t, 256>; // one channel of all entries

    Plane red_{}, green_{}, blue_{};
};

void reset_colours();
