// Drawing into a picture: the screen's or any image's.
//
// Coordinates are real numbers, rounded to the nearest whole pixel, halves to the even one; figures are cut at the clip
// rectangle and at the picture's edges, however far out they lie. A figure with a coordinate that is not a number is
// not drawn. Colours are 0xAARRGGBB; in a 16-bit picture they become 5-6-5, in an 8-bit one their low byte is the
// index.
#pragma once

#include "drawing/canvas.h"
#include "image/image.h"

#include <cstdint>
#include <string>
#include <string_view>

constexpr int glyph_width = 8;
constexpr int glyph_height = 16;

void draw_line(Canvas& canvas, double x1, double y1, double x2, double y2, std::uint32_t colour);
void draw_line(Canvas& canvas, double x1, double y1, double x2, double y2); // in the foreground colour
void draw_line_relative(Canvas& canvas, double x1, double y1, double dx, double dy, std::uint32_t colour);
void draw_line_from_pen(Canvas& canvas, double x2, double y2, std::uint32_t colour);
void draw_box(Canvas& canvas, double x1, double y1, double x2, double y2, std::uint32_t colour);
void draw_box_relative(Canvas& canvas, double x1, double y1, double dx, double dy, std::uint32_t colour);
void fill_box(Canvas& canvas, double x1, double y1, double x2, double y2, std::uint32_t colour);
inline void fill_box(Canvas& canvas, const Rectangle& box, std::uint32_t colour) {
    if (!box.empty()) fill_box(canvas, box.x1, box.y1, box.x2, box.y2, colour);
}
void fill_box_relative(Canvas& canvas, double x1, double y1, double dx, double dy, std::uint32_t colour);
void draw_pixel(Canvas& canvas, double x, double y, std::uint32_t colour);

constexpr double whole_circle = 6.283186; // as an end angle: the figure is closed

// Circle, ellipse or arc. `radius` is the longer half-axis, `aspect` height / width. Angles in radians,
// counter-clockwise from the right, measured before the aspect is applied; 0 to whole_circle is the whole figure, which
// alone can be filled. A negative start or end angle stands for its absolute value and adds the line from the centre to
// that end of the arc. A radius or an aspect that is not a positive number draws nothing, except radius 0: one pixel.
void draw_circle(Canvas& canvas, double x, double y, double radius, std::uint32_t colour, double aspect = 1,
                 double start = 0, double end = whole_circle, bool filled = false);

// Text in the 8 x 16 font, its top left corner at (x, y); the ground between the glyph pixels stays. Bytes are
// characters of code page 437.
void draw_text(Canvas& canvas, double x, double y, std::string_view text, std::uint32_t colour);
// Text at the text cursor, in the foreground colour; the ground stays, the cursor moves behind the text and wraps at
// the right edge of the text grid (set_text_grid_width).
void print_text(Canvas& canvas, std::string_view text);
void set_text_grid_width(int columns);

enum class DrawMode {
    copy,  // every pixel replaces the target's
    and_,  // target AND source, bitwise
    or_,   // target OR source, bitwise
    alpha, // source x a + target x (1 - a), a = source alpha / 255, rounded; an opaque target stays opaque
};
// Draws the whole image with its top left corner at (x, y). Images of another depth are converted to the canvas's
// first. The image may be the canvas's own.
void draw_image(Canvas& canvas, const Image& image, double x, double y, DrawMode mode);

// The rows of one glyph, top first, bit 7 the leftmost pixel.
const std::uint8_t* glyph_rows(unsigned char character);
