#include "dash/panel.h"

#include "base/decimal.h"
#include "widgets/widgets.h"
#include "window/window.h"

void draw_row(const PanelColumns& columns, const PanelRow& row) {
    draw_text(screen(), columns.labels, row.y, row.label, colour::label);
    draw_text(screen(), columns.values, row.y, row.value, colour::value);
}

void draw_heading(const PanelColumns& columns, int y, std::string_view text) {
    draw_text(screen(), columns.labels, y, text, colour::title);
}

std::string point_text(CockpitPoint point) {
    return "(" + std::to_string(point.x) + ", " + std::to_string(point.y) + ")";
}

std::string number_text(double value) {
    constexpr int significant_digits = 6;
    return decimal_text(value, significant_digits);
}
