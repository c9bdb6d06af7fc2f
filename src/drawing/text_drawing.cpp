// Text: at any pixel, and on the text grid.
#include "base/reset.h"
#include "drawing/drawing.h"
#include "drawing/plotter.h"

#include <algorithm>

namespace {

constexpr int first_grid_width = 120;
int text_grid_width = first_grid_width;

void plot_glyph(Plotter& plotter, std::int64_t left, std::int64_t top, unsigned char character) {
    const std::uint8_t* const rows = glyph_rows(character);
    for (int y = 0; y < glyph_height; ++y)
        for (int x = 0; x < glyph_width; ++x)
            if (rows[y] >> (glyph_width - 1 - x) & 1) plotter.pixel(left + x, top + y);
}

} // namespace

void draw_text(Canvas& canvas, double x, double y, std::string_view text, std::uint32_t colour) {
    if (!are_numbers({x, y})) return;
    Plotter plotter(canvas, colour);
    const Rectangle& clip = plotter.clip();
    const std::int64_t top = whole_pixel(y);
    if (top > clip.y2 || top + glyph_height <= clip.y1) return;
    std::int64_t left = whole_pixel(x);
    for (const char character : text) {
        if (left > clip.x2) break;
        if (left + glyph_width > clip.x1) plot_glyph(plotter, left, top, static_cast<unsigned char>(character));
        left += glyph_width;
    }
}

void print_text(Canvas& canvas, std::string_view text) {
    for (const char character : text) {
        if (canvas.text_column >= text_grid_width) {
            canvas.text_column = 0;
            ++canvas.text_row;
        }
        draw_text(canvas, double{glyph_width} * canvas.text_column, double{glyph_height} * canvas.text_row,
                  std::string_view(&character, 1), canvas.foreground);
        ++canvas.text_column;
    }
}

void set_text_grid_width(int columns) { text_grid_width = std::max(columns, 1); }

namespace {
const ResetWithProgram registered([] { set_text_grid_width(first_grid_width); });
}
