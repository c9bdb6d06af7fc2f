// Real numbers as the 16-bit words of the game's files.
#pragma once

#include <cstdint>

// The nearest whole number, halves to the even one, as its low 16 bits: negative numbers and those beyond 16 bits are
// taken modulo 65536. Not-a-number and infinities give 0.
std::uint16_t rounded_word(double value);
