// The rows of the panels beside the cockpit.
#pragma once

#include "model/gauges.h"

#include <string>
#include <string_view>

// A label and its value on one line.
struct PanelRow {
    int y;
    std::string_view label;
    std::string value{};
};
struct PanelColumns {
    int labels, values; // x
};
constexpr PanelColumns edit_columns{730, 815};

void draw_row(const PanelColumns& columns, const PanelRow& row);
void draw_heading(const PanelColumns& columns, int y, std::string_view text);

std::string point_text(CockpitPoint point); // "(12, 34)"
std::string number_text(double value);      // six significant digits, no trailing zeros
