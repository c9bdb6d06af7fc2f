// The colour tables: the game's palette, the materials, the paint-job colour schemes. Colours are 0xAARRGGBB.
#pragma once

#include "base/table.h"

#include <array>
#include <cstdint>
#include <memory>

struct MaterialColour {
    std::uint32_t colour = 0;   // alpha always 0xFF once read
    std::uint8_t attribute = 0; // top byte of the stored word, kept aside
};

extern std::array<std::uint32_t, 256> PAL;       // the game's palette
extern std::array<MaterialColour, 256> MATERIAL; // by material number
constexpr int max_colour_schemes = 32;
extern OneBased<std::array<std::uint8_t, 4>, max_colour_schemes> PJCOL; // four materials a scheme, one per shade
extern std::uint8_t PJCOLS;                                             // schemes in use

// Finds the palette index nearest to a colour: always exactly what nearest_palette_entry_by_scan gives. Made for a
// palette, then asked per pixel; it learns from what it is asked, so one object serves one thread.
class NearestPaletteEntry {
public:
    explicit NearestPaletteEntry(const std::array<std::uint32_t, 256>& palette);
    ~NearestPaletteEntry();
    NearestPaletteEntry(NearestPaletteEntry&&) noexcept;
    NearestPaletteEntry& operator=(NearestPaletteEntry&&) noexcept;

    std::uint8_t operator()(std::uint32_t colour) const;

private:
    struct Index;
    std::unique_ptr<Index> index_;
};

void reset_colours();
