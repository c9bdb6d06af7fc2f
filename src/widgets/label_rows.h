// Rows of a label and its value, one below the other, as the panels of the screens have them.
#pragma once

#include "drawing/drawing.h"
#include "widgets/widgets.h"

#include <cstdint>
#include <string_view>

class LabelRows {
public:
    LabelRows(Canvas& canvas, int label_x, int value_x, int first_y)
        : canvas_(canvas), label_x_(label_x), value_x_(value_x), y_(first_y) {}

    void row(std::string_view label, std::string_view value, std::uint32_t value_colour = colour::value);
    void heading(std::string_view text); // a row of its own, bright
    void skip(int rows = 1);

private:
    Canvas& canvas_;
    const int label_x_, value_x_;
    int y_;
};
