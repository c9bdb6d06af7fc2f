// The project file (".car"): a whole car in one file, the models unrounded and with the auxiliary slots.
//
//   0   "*car", 13 10 26 0, version 1 0 0, u8 number of chunks
//   12  a chunk each: id of four characters, u32 offset of its data in the file
//
// "Base" holds the texts, "Pars" the parameter block, "Shps" the models, "Dash" the bitmaps. Chunks carry no length.
#pragma once

#include "base/byte_writer.h"
#include "base/file_status.h"
#include "model/document.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

constexpr std::size_t project_models = car_slots + explosion_models;

struct ProjectFile {
    std::string name, sign_name, information;
    ParameterBlock par{};
    std::uint8_t paint_jobs = 0;                           // 0 .. 255 as the file has it
    std::array<Shared<SHAPEMODEL>, project_models> models; // the car slots, then the explosion models
    std::vector<BitmapRecord> bitmaps;                     // at most max_bitmaps of max_bitmap_pixels in all
    bool cut = false;                                      // the file holds more than there is room for

    bool operator==(const ProjectFile&) const = default;
};

// Whether the bytes begin as a project does ("*car"). Nothing else of the header is looked at.
bool is_project_file(std::span<const std::byte> file);

// Fills `project` from the bytes of a file; the bitmaps become the file's, of everything else what the file does not
// hold keeps its value. Of two chunks with one id the last counts, a missing one is read from the start of the file.
// Vertices, primitives, materials and bitmaps for which there is no room are read over and remembered in `cut`. Pixels
// that the file lacks are 0. Where masks lead back to themselves, the bitmap that closes the circle loses its mask.
// Returns what there is to remark on the file.
FileRemark decode_project_file(std::span<const std::byte> file, ProjectFile& project);
// The bytes of a file with the chunks in the order Base, Pars, Shps, Dash. Texts are cut after 65535 bytes, ids are cut
// or filled with blanks to four characters, pixels that a bitmap lacks are 0.
Bytes encode_project_file(const ProjectFile& project);

// The car of the tables, and back. PAINTJOBS is then held within 1 .. 17, a CURPJ that is gone becomes 0, and the items
// are bound to the bitmaps; the window's title, the Powergear class and the positions of the bitmaps stay as they come.
ProjectFile project_of(const CarDocument& car);
ProjectFile project_of_tables();
void keep_project(ProjectFile project);

// Replaces the whole car by that of a file. "File not found", "Read error" and "Unknown format" (it does not
// begin with "*car") change nothing; whatever found no room is reported as "Too large, cut to fit".
FileOutcome LOADCAR(const std::string& filename);
// Writes the whole car. Reports "Invalid file name" or "Write error", and "Too large, cut to fit" when a text is longer
// than 65535 bytes.
FileOutcome SAVECAR(const std::string& filename);
