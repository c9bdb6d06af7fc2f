// The table of edit targets: where each editable value of the car is shown, what it is called, where it lives and which
// values it may take.
#pragma once

#include "base/table.h"

#include <array>
#include <cstdint>
#include <string>

namespace target_type {
constexpr std::uint8_t option = 0, byte = 1, word = 2, car_name = 3, sign_name = 4;
}

struct PARAMINPUT {
    std::int16_t label_x = 0, label_y = 0; // also the top left corner of the hover area, 16 pixels high
    std::string label;
    std::int16_t value_x = 0, value_y = 0;
    std::int16_t width = 0;                // of the hover area, in cells of 8 pixels
    std::int32_t minimum = 0, maximum = 0; // values; for the texts the maximum length
    std::int16_t offset = 0;               // in PAR; -1: the option value below
    std::uint8_t type = 0;                 // see target_type
    std::string unit;
    float factor = 0;
    std::int32_t option_base = 0; // TEXTOPTION index of choice 0; the choice itself is POWERGEAR
};

constexpr int parameter_targets = 39; // rows 1 .. 39 are used
constexpr int mass_row = 1;
constexpr int powergear_row = 2;

extern OneBased<PARAMINPUT, 100> PTARGET;
extern std::array<std::string, 5> TEXTOPTION;

// Fills PTARGET and TEXTOPTION and stores a new car's defaults in PAR and the three texts. The Powergear option stays
// 0: nothing has classified the mass yet.
void INITPARAMTARGETS();

// The word of a type-2 target lies at the even offset at or below its offset.
constexpr int target_word_offset(int offset) { return offset / 2 * 2; }
