#include "files/list_view.h"

#include "files/file_list.h"
#include "widgets/widgets.h"

#include <algorithm>
#include <string>

namespace {

constexpr Rectangle list_area{18, 130, 597, 585};
constexpr Rectangle hit_area{40, 130, 549, 579};
constexpr int text_x = 50;
// Where a list that is longer than its room stands.
constexpr int bar_left = 594, bar_right = 597;
constexpr std::uint32_t bar_ground = colour::hover, bar_colour = colour::label;
constexpr std::uint32_t file_colour = colour::label, file_hovered = 0xFFF0F0F0;
constexpr std::uint32_t directory_colour = 0xFF00FA00, directory_hovered = 0xFFC8FAC8;

std::string row_text(const LISTEDFILE& entry) {
    switch (entry.kind) {
    case entry_kind::file: return entry.shown;
    case entry_kind::directory: return "[" + entry.shown + "]";
    default: return "[ - " + entry.shown + " - ]";
    }
}

std::uint32_t row_colour(const LISTEDFILE& entry, bool hovered) {
    if (entry.kind == entry_kind::file) return hovered ? file_hovered : file_colour;
    return hovered ? directory_hovered : directory_colour;
}

int row_y(int row) { return list_area.y1 + glyph_height * row; }

bool has_bar() { return LFILES > list_rows; }

// A row's pixels, up to the gap before the bar.
Rectangle row_area(int row) {
    return {list_area.x1, row_y(row), has_bar() ? bar_left - 2 : list_area.x2, row_y(row) + glyph_height - 1};
}

// As much of a text as has room, in whole characters.
std::string cut_to_row(const std::string& text, int row) {
    return text.substr(0, static_cast<std::size_t>((row_area(row).x2 + 1 - text_x) / glyph_width));
}

// The bar's pixel that stands for the upper edge of an entry.
int bar_y(int entry) { return row_y(0) + glyph_height * list_rows * (entry - 1) / LFILES; }

void draw_bar(const ListView& view, Canvas& canvas) {
    if (!has_bar()) return;
    fill_box(canvas, bar_left, bar_y(1), bar_right, bar_y(LFILES + 1) - 1, bar_ground);
    fill_box(canvas, bar_left, bar_y(view.top), bar_right, bar_y(view.top + list_rows) - 1, bar_colour);
}

void draw_entry(const ListView& view, int row, Canvas& canvas) {
    const int index = list_entry(view, row);
    if (index == 0) return;
    const LISTEDFILE& entry = LFILE[index];
    draw_text(canvas, text_x, row_y(row), cut_to_row(row_text(entry), row), row_colour(entry, row == view.row));
}

} // namespace

bool in_list(Point at) { return hit_area.contains(at); }

int list_row_at(Point at) {
    const int row = (at.y - list_area.y1) / glyph_height;
    return row < list_rows ? row : no_list_row;
}

int list_entry(const ListView& view, int row) {
    return row != no_list_row && view.top + row <= LFILES ? view.top + row : 0;
}

// ODDITY files-wheel-stops-short (kept): in a list of more than 28 entries the wheel never brings the last one into
// view.
void scroll_list(ListView& view, int rows_down) {
    view.top = std::max(1, std::min(view.top + rows_down, LFILES - list_rows));
}

void keep_in_list(ListView& view) { view.top = std::max(1, std::min(view.top, LFILES - list_rows + 1)); }

void page_list(ListView& view, int pages_down) {
    view.top += pages_down * list_rows;
    keep_in_list(view);
}

void draw_list(const ListView& view, Canvas& canvas) {
    fill_box(canvas, list_area, colour::background);
    draw_bar(view, canvas);
    for (int row = 0; row < list_rows; ++row)
        draw_entry(view, row, canvas);
}

void draw_list_row(const ListView& view, int row, Canvas& canvas) {
    if (row == no_list_row) return;
    fill_box(canvas, row_area(row), colour::background);
    draw_entry(view, row, canvas);
}
