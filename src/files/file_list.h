// The list of the Files screen: configured directory links, sub-directories, and the files or cars of the current
// directory.
#pragma once

#include "base/table.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace entry_kind {
constexpr std::uint8_t file = 0, directory = 1, completed_link = 2, link = 3, // completed_link is reserved
    kept_work = 4;
}

struct LISTEDFILE {
    std::string name;  // what choosing it stands for: file name, directory, car's identifier, stem of kept work
    std::string shown; // in characters of the font
    std::uint8_t kind = entry_kind::file;
};

constexpr int max_listed_files = 200;
extern OneBased<LISTEDFILE, max_listed_files> LFILE;
extern std::int16_t LFILES;
// How many entries there would be had the list room for all.
int listable_entries();

// The mode that lists car sets and projects by their names.
inline const std::string cars_mode = "cars";

// Fills LFILE anew from the current directory. `mode` is "cars", a filter of extensions such as ".res.vsh.", or empty
// for every file. Links come first, then "..", then the rest in name order until 200 entries are there; then all are
// sorted: larger kinds first, within a kind by the shown text without regard to case. Only regular files are opened;
// one that cannot be read is shown by its file name. Of a directory that cannot be read nothing but the links and ".."
// is listed, and it is noted (file_status.h).
void UPDATEFILELIST(const std::string& mode);

// Puts the unsaved work that is offered before all of them.
void list_kept_work();

// Whether a file name passes a filter (not "cars").
bool passes_filter(std::string_view file_name, std::string_view filter);

// The car's name that a parameter file holds: up to 40 bytes of its "gnam", cut before a zero byte.
std::string listed_car_name(std::span<const std::byte> parameter_file);
// The car's name in a project file's "Base" chunk.
std::string listed_project_name(std::span<const std::byte> project_file);
