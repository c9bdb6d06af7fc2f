#include "files/file_fields.h"

#include "drawing/drawing.h"
#include "widgets/widgets.h"

#include <algorithm>

namespace {

constexpr int field_cells = 63; // of a field's text that have room beside its label, the caret behind the last included
constexpr std::uint32_t field_caret = 0xFF00FA00;
constexpr Rectangle field_area{90, 60, 597, 91};
constexpr int label_x = 30; // of the fields' labels, which count as parts of them

int field_y(Field which) { return field_area.y1 + glyph_height * static_cast<int>(which); }

} // namespace

FileFields::FileFields(const std::string& directory)
    : fields_{LineEdit(field_limit, directory, Typing::file_name), LineEdit(field_limit, {}, Typing::file_name)} {}

void FileFields::put_text(Field which, const std::string& text) {
    field(which).set_text(text);
    if (focus_ == which) focused().caret_to_end();
}

void FileFields::switch_focus() {
    focus_ = focus_ == Field::file ? Field::directory : Field::file;
    focused().caret_to_end();
}

void FileFields::click_into(Field which, int x) {
    const int cell = (x - field_area.x1 + glyph_width / 2) / glyph_width + first(which);
    focus_ = which;
    focused().move_caret_to_cell(static_cast<std::size_t>(std::max(0, cell)));
}

void FileFields::keep_caret_in_view() {
    int& first = first_in_view_[static_cast<std::size_t>(focus_)];
    const int caret = static_cast<int>(focused().caret_cell());
    const int kept = std::clamp(first, std::max(0, caret - (field_cells - 1)), caret);
    first_in_view_ = {};
    first = kept;
}

void FileFields::draw(Canvas& canvas) const {
    fill_box(canvas, field_area, colour::background);
    draw_field(Field::directory, canvas);
    draw_field(Field::file, canvas);
}

void FileFields::draw_field(Field which, Canvas& canvas) const {
    const std::string in_view = field(which).shown().substr(static_cast<std::size_t>(first(which)), field_cells);
    draw_text(canvas, field_area.x1, field_y(which), in_view, colour::value);
    if (focus_ != which) return;
    const int cell = static_cast<int>(field(which).caret_cell()) - first(which);
    draw_box_relative(canvas, field_area.x1 + glyph_width * cell, field_y(which), 0, 14, field_caret);
}

void FileFields::draw_labels(Canvas& canvas) {
    draw_text(canvas, label_x, field_y(Field::directory), "Dir:", colour::label);
    draw_text(canvas, label_x, field_y(Field::file), "File:", colour::label);
}

std::optional<Field> FileFields::at(Point place) {
    if (place.x < label_x || place.x > field_area.x2 || place.y < field_area.y1 || place.y > field_area.y2)
        return std::nullopt;
    return place.y < field_y(Field::file) ? Field::directory : Field::file;
}
