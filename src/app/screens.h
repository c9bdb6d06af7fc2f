// The screens by number: one row each.
#pragma once

#include "widgets/key_table.h"

#include <cstdint>
#include <span>
#include <vector>

struct ScreenRow {
    std::uint8_t number; // in CURMENU, and of its cell in the menu bar
    const char* name;
    void (*run)();
    std::vector<KeyHelpTable> (*keys)();
};
std::span<const ScreenRow> screens();
