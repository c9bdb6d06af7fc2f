#include "widgets/label_rows.h"

void LabelRows::row(std::string_view label, std::string_view value, std::uint32_t value_colour) {
    draw_text(canvas_, label_x_, y_, label, colour::label);
    draw_text(canvas_, value_x_, y_, value, value_colour);
    skip();
}

void LabelRows::heading(std::string_view text) {
    draw_text(canvas_, label_x_, y_, text, colour::title);
    skip();
}

void LabelRows::skip(int rows) { y_ += glyph_height * rows; }
