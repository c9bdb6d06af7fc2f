// The material table "material.dat" and the paint-job colour schemes "pjobs.cfg".
#pragma once

#include "base/byte_writer.h"
#include "model/colours.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

// One little-endian word a material: attribute in the top byte, colour in the others. Words past the 256th are left
// out.
void decode_materials(std::span<const std::byte> file, std::array<MaterialColour, 256>& materials);
Bytes encode_materials(const std::array<MaterialColour, 256>& materials);

// The colour schemes of a text: four numbers a line, separated by blanks, their low 8 bits each; what is missing or is
// no number counts as 0. ";" starts a comment, lines without anything else are left out; at most 32 schemes.
using ColourSchemes = std::vector<std::array<std::uint8_t, 4>>;
ColourSchemes decode_colour_schemes(std::string_view text);

// Reads PROGDIR + "material.dat" into MATERIAL (over the built-in base colours 200 .. 203) and "pjobs.cfg" of the
// current directory into PJCOL and PJCOLS, which starts from 0 each time. Missing files are silent. Of a file that
// cannot be read nothing is kept, and it is noted (file_status.h).
void LOADMATERIALS();
