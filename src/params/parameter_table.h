// The table of edit targets: where each editable value of the car is shown, what it is called, where it lives and which
// values it may take; and the Powergear class that is derived from the mass.
#pragma once

#include "model/table.h"

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
    std::int32_t option_value = 0; // current choice, 0 .. maximum
    std::int32_t option_base = 0;  // TEXTOPTION index of choice 0
};

constexpr int parameter_targets = 39; // rows 1 .. 39 are used
constexpr int mass_row = 1;
constexpr int powergear_row = 2;

extern OneBased<PARAMINPUT, 100> PTARGET;
extern std::array<std::string, 5> TEXTOPTION;

// Fills PTARGET and TEXTOPTION and stores a new car's defaults in PAR and the three texts. The Powergear option stays
// 0: nothing has classified the mass yet.
void INITPARAMTARGETS();

// Powergear class (0 .. 4) of a mass, by the fractional part of 65536 / mass. Mass 0 counts as class 0.
int powergear_class(int mass);

// apply false: the Powergear option becomes the class of the current mass. apply true: the mass becomes the nearest
// one, the heavier of two equally near, whose class is the chosen option.
void UPDATEPG(bool apply);

// The word of a type-2 target lies at the even offset at or below its offset.
constexpr int target_word_offset(int offset) { return offset / 2 * 2; }
