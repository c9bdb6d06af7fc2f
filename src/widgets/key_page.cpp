#include "widgets/key_page.h"

#include "base/text.h"
#include "drawing/drawing.h"
#include "widgets/page.h"
#include "widgets/widgets.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

constexpr std::size_t page_cells = (page_text.x2 - page_text.x1 + 1) / glyph_width;
constexpr std::size_t page_lines = (page_text.y2 - page_text.y1 + 1) / glyph_height;
constexpr std::size_t most_columns = 3;
constexpr std::size_t column_gap = 3, words_gap = 2; // cells
// The cells that the keys' names take at most, with one, two and three columns.
constexpr std::array<std::size_t, most_columns> key_cells = {32, 19, 12};

struct Columns {
    std::size_t count, cells, keys, words; // widths in cells
};

Columns columns_of(std::size_t count, const std::vector<KeyHelpTable>& tables) {
    std::size_t longest = 0;
    for (const KeyHelpTable& table : tables)
        for (const KeyHelp& row : table.rows)
            longest = std::max(longest, row.keys.size());
    const std::size_t cells = (page_cells - column_gap * (count - 1)) / count;
    const std::size_t keys = std::min(longest, key_cells[count - 1]);
    return {count, cells, keys, cells - keys - words_gap};
}

// Puts entries below each other, in the next column when one is full.
class Layout {
public:
    explicit Layout(const Columns& columns) : columns_(columns) {}

    void table(const KeyHelpTable& table) {
        if (line_ > 0) ++line_; // a blank line
        if (!table.heading.empty()) heading(table);
        for (const KeyHelp& row : table.rows)
            entry(row);
    }
    bool fits() const { return fits_; }
    std::vector<PlacedKeys> take() { return std::move(placed_); }

private:
    // A heading never stands alone at the foot of a column.
    void heading(const KeyHelpTable& table) {
        PlacedKeys heading{.keys = wrapped(table.heading, columns_.cells), .words = {}, .is_heading = true};
        const std::size_t first_row = table.rows.empty() ? 0 : lines_of(laid_out(table.rows.front()));
        place(std::move(heading), first_row);
    }
    void entry(const KeyHelp& row) { place(laid_out(row), 0); }

    PlacedKeys laid_out(const KeyHelp& row) const {
        return {
            .keys = wrapped(row.keys, columns_.keys), .words = wrapped(row.words, columns_.words), .works = row.works};
    }
    static std::size_t lines_of(const PlacedKeys& entry) { return std::max(entry.keys.size(), entry.words.size()); }

    void place(PlacedKeys entry, std::size_t lines_behind) {
        const std::size_t lines = lines_of(entry);
        if (line_ + lines + lines_behind > page_lines) {
            ++column_;
            line_ = 0;
        }
        if (column_ == columns_.count) {
            fits_ = false;
            return;
        }
        entry.x = page_text.x1 + glyph_width * static_cast<int>(column_ * (columns_.cells + column_gap));
        entry.y = page_text.y1 + glyph_height * static_cast<int>(line_);
        entry.words_x = entry.x + glyph_width * static_cast<int>(columns_.keys + words_gap);
        line_ += lines;
        placed_.push_back(std::move(entry));
    }

    const Columns columns_;
    std::size_t column_ = 0, line_ = 0;
    bool fits_ = true;
    std::vector<PlacedKeys> placed_;
};

void draw_lines(Canvas& canvas, int x, int y, const std::vector<std::string>& lines, std::uint32_t colour) {
    for (const std::string& line : lines) {
        draw_text(canvas, x, y, line, colour);
        y += glyph_height;
    }
}

void draw_entry(Canvas& canvas, const PlacedKeys& entry) {
    if (entry.is_heading) return draw_lines(canvas, entry.x, entry.y, entry.keys, colour::section_title);
    draw_lines(canvas, entry.x, entry.y, entry.keys, entry.works ? colour::value : idle_key_colour);
    draw_lines(canvas, entry.words_x, entry.y, entry.words, entry.works ? colour::label : idle_key_colour);
}

} // namespace

std::vector<PlacedKeys> lay_out_keys(const std::vector<KeyHelpTable>& tables) {
    for (std::size_t count = 1;; ++count) {
        Layout layout(columns_of(count, tables));
        for (const KeyHelpTable& table : tables)
            layout.table(table);
        if (layout.fits() || count == most_columns) return layout.take();
    }
}

void show_key_page(const std::vector<KeyHelpTable>& tables) {
    const std::vector<PlacedKeys> entries = lay_out_keys(tables);
    show_page([&](Canvas& canvas) {
        draw_page(canvas, "= KEYS =", "Keys and mouse", "Any key or click closes this page");
        for (const PlacedKeys& entry : entries)
            draw_entry(canvas, entry);
    });
}
