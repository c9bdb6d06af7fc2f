#include "editor3d/info_panel.h"

#include "model/car.h"
#include "widgets/widgets.h"
#include "window/window.h"

#include <array>
#include <charconv>
#include <string>

namespace {

constexpr int label_x = 760, value_x = 860;
constexpr int values_top = 64, values_width = 171, values_height = 111;
constexpr std::uint32_t many = 0xFFC8B400; // more than the game's shape files count
constexpr int most_in_a_shape_file = 255;

void draw_row(int y, const std::string& label, const std::string& value, std::uint32_t value_colour = colour::value) {
    draw_text(screen(), label_x, y, label, colour::label);
    draw_text(screen(), value_x, y, value, value_colour);
}

void draw_count(int y, const std::string& label, int count) {
    draw_row(y, label, std::to_string(count), count > most_in_a_shape_file ? many : colour::value);
}

std::string snap_text(double snap) {
    constexpr int significant_digits = 6;
    std::array<char, 32> text;
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), snap, std::chars_format::general, significant_digits);
    return std::string(text.data(), end.ptr) + "m";
}

} // namespace

void draw_info_panel(MoveMode mode, double snap) {
    const SHAPEMODEL& model = *shown_slot();
    DRAWSECTION(740, 50, 949, 565, "Info panel", false);
    fill_box_relative(screen(), label_x, values_top, values_width - 1, values_height - 1, colour::background);
    draw_row(64, "Model", slot_label(CURMODEL));
    draw_row(80, "Paint job", std::to_string(CURPJ + 1) + "/" + std::to_string(PAINTJOBS));
    draw_count(96, "Vertices", model.nverts);
    draw_count(112, "Primitives", model.nprims);
    draw_row(144, "Move mode", move_mode_name(mode));
    draw_row(160, "Move snap", snap_text(snap));
}
