// Making colours of those in the palette by mixing neighbours.
#pragma once

#include "image/image.h"
#include "model/bitmap_record.h"

#include <array>
#include <cstdint>

enum class Dither : std::uint8_t { none, ordered, floyd_steinberg };
constexpr int dithers = 3;
const char* dither_name(Dither dither); // for a person

// The picture's pixels (32 bits, top row first) as indices of the palette. Without dithering each is the nearest entry.
// Ordered adds a pattern of eight by eight thresholds, Floyd-Steinberg hands on what each pixel is off by to those
// right of it and below; colours that the palette has stay what they are as long as no error reaches them. What is
// see-through (alpha below 128) neither takes nor gives an error.
Pixels dithered(const Image& picture, const std::array<std::uint32_t, 256>& palette, Dither dither);
