// The game's palette file "vortag.col": 256 little-endian words 0xAARRGGBB, entry 0 first.
#pragma once

#include "base/byte_writer.h"

#include <array>
#include <cstdint>
#include <span>

// Entries past the end of the bytes stay as they were.
void decode_palette(std::span<const std::byte> file, std::array<std::uint32_t, 256>& palette);
Bytes encode_palette(const std::array<std::uint32_t, 256>& palette);

// Reads PROGDIR + "vortag.col" into PAL. A missing file is silent and leaves PAL as it was; so does one that cannot be
// read, which is noted (file_status.h).
void LOADPALETTE();
