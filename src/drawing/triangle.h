// Filled triangles, stepped in whole numbers: the same pixels for the same corners, whatever machine draws them.
#pragma once

#include "drawing/canvas.h"

#include <cstdint>

// The screen that triangles know, besides the canvas's clip rectangle: rows and columns outside it are not filled.
constexpr int triangle_last_column = 959;
constexpr int triangle_last_row = 647;

// Fills a triangle with corners in whole pixels, in any order, and draws its outline in the same colour. A triangle
// whose three corners lie on one row is its outline alone; one that lies wholly above row 0 or below the last row is
// not drawn. One with three different rows is drawn as its two halves above and below the middle corner, each with its
// own outline. The canvas's pen stays where it is.
void DRAWTRIANGLE(Canvas& canvas, std::int16_t x1, std::int16_t y1, std::int16_t x2, std::int16_t y2, std::int16_t x3,
                  std::int16_t y3, std::uint32_t colour);
