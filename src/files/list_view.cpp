#include "files/list_view.h"

#include "files/file_list.h"
#include "widgets/widgets.h"

#include <algorithm>
#include <string>

namespace {

constexpr Rectangle list_area{18, 130, 597, 585};
constexpr Rectangle hit_area{40, 130, 549, 579};
constexpr int text_x = 50;
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

void draw_entry(const ListView& view, int row, Canvas& canvas) {
    const int index = list_entry(view, row);
    if (index == 0) return;
    const LISTEDFILE& entry = LFILE[index];
    draw_text(canvas, text_x, row_y(row), row_text(entry), row_colour(entry, row == view.row));
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

void draw_list(const ListView& view, Canvas& canvas) {
    const ClipGuard clip(canvas, list_area);
    fill_box(canvas, list_area, colour::background);
    for (int row = 0; row < list_rows; ++row)
        draw_entry(view, row, canvas);
}

void draw_list_row(const ListView& view, int row, Canvas& canvas) {
    if (row == no_list_row) return;
    const Rectangle area{list_area.x1, row_y(row), list_area.x2, row_y(row) + glyph_height - 1};
    const ClipGuard clip(canvas, area);
    fill_box(canvas, area, colour::background);
    draw_entry(view, row, canvas);
}
