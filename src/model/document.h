// The car as one value: everything that a person edits, and nothing else.
//
// The document can be copied, compared and put back; blocks that did not change (a model, the pixels of a bitmap) are
// shared between copies. What is shown and how (the current slot and paint job, views, previews), the clipboard and the
// colour tables are not part of it. The tables keep the names that the whole program knows them by: they are members of
// the one document that is edited, DOCUMENT.
#pragma once

#include "base/shared.h"
#include "base/table.h"
#include "model/bitmap_record.h"
#include "model/shape.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

constexpr std::size_t parameter_bytes = 776;
using ParameterBlock = std::array<std::byte, parameter_bytes>;
constexpr std::uint8_t initial_paint_jobs = 7;

// Where a car came from.
struct CarOrigin {
    std::string title_name; // its name as the last load of a parameter file left it: the window's title names it
    std::string loaded;     // what was loaded last, as it was asked for: an identifier or a file
    std::uint32_t load = 0; // the number of that load, another one for each; 0 before the first

    bool operator==(const CarOrigin&) const = default;
};

struct CarDocument {
    ParameterBlock par{};
    std::string name, sign_name, information;
    std::int32_t power_gear = 0;

    std::array<Shared<SHAPEMODEL>, car_slots> models;
    std::array<Shared<SHAPEMODEL>, explosion_models> explosions;
    std::uint8_t paint_jobs = initial_paint_jobs;

    Table<BitmapRecord, 0, max_bitmaps> bitmaps;
    std::uint8_t bitmap_count = 0;

    CarOrigin origin; // travels with the car, but is no difference between two cars

    // Whether both are the same car, to the last bit. Blocks that the two share cost a pointer.
    bool operator==(const CarDocument& other) const;
};

extern CarDocument DOCUMENT;

// The raw content of the game's "simd" resource, little-endian, addressed by byte offset; what is not understood is
// kept byte for byte.
inline constexpr auto& PAR = DOCUMENT.par;
inline constexpr auto& CARNAME = DOCUMENT.name;                // "gnam": the car's full name
inline constexpr auto& CARSIGNNAME = DOCUMENT.sign_name;       // "gsna": the short name on the sign
inline constexpr auto& CARINFO = DOCUMENT.information;         // "edes": the description, every line ended by "]"
inline constexpr auto& TITLENAME = DOCUMENT.origin.title_name; // see CarOrigin
inline constexpr auto& POWERGEAR = DOCUMENT.power_gear;        // the class that was chosen or found last: 0 .. 4
inline constexpr auto& CAR = DOCUMENT.models;                  // 0 showroom, 1 game, 2 intro, 3 and 4 auxiliary
inline constexpr auto& CEXP = DOCUMENT.explosions;             // the explosion models
inline constexpr auto& PAINTJOBS = DOCUMENT.paint_jobs;        // 1 .. 17
inline constexpr auto& BITMAP = DOCUMENT.bitmaps; // entry 0 is the canvas, 1 .. BITMAPS are in use, without holes
inline constexpr auto& BITMAPS = DOCUMENT.bitmap_count;
