// What the arrow keys move or resize, by the view under the pointer and the move mode: eight constant rows.
#pragma once

#include "widgets/key_table.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

enum class MoveMode : std::uint8_t { car, wheels, resize_wheels, collision };
constexpr int move_modes = 4;
const char* move_mode_name(MoveMode mode);

// A change along x, y and z as parts of the move snap.
using SnapVector = std::array<double, 3>;

// A word of PAR that is changed by one, as far as the bound. A word beyond it, which a file has set, stays.
struct CollisionStep {
    int word = 0;  // byte offset
    int step = 0;  // 1 or -1
    int bound = 0; // the last value that is reached
};

struct ArrowRow {
    const char* key = "";
    std::array<int, 2> views{}; // 1 top, 2 front, 3 side; 0 where there is only one
    SnapVector car{}, wheels{}, wheel_size{};
    CollisionStep collision;
    std::array<const char*, move_modes> words{}; // what it does in each mode, for a person
};
std::span<const ArrowRow> arrow_rows();
KeyHelpTable arrow_key_help(); // in all modes
// In one of them, with the pointer over a view (0 for none).
KeyHelpTable arrow_key_help_now(MoveMode mode, int hovered);

// The row of an arrow key in a wireframe view; null for the 3D view, no view, and other keys.
const ArrowRow* arrow_row(std::string_view typed, int view);
// Does what the row says in this mode, on the slot CURMODEL or on PAR.
void move_by(const ArrowRow& row, MoveMode mode, double snap);
