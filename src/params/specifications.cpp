#include "params/specifications.h"
#include "model/document.h"

#include "base/text.h"
#include "model/parameters.h"
#include "widgets/widgets.h"
#include "window/input.h"
#include "window/window.h"

#include <algorithm>
#include <vector>

namespace {

constexpr char line_end = ']';
constexpr std::uint32_t edited_text_colour = 0xFF00FA00;
constexpr std::uint32_t caret_colour = 0xFF64FA64;
constexpr int text_x = 750, text_y = 365;

// Takes the next line off `rest`.
std::string_view take_line(std::string_view& rest) {
    const std::size_t end = rest.find(line_end);
    const std::string_view line = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view{} : rest.substr(end + 1);
    return line.substr(0, specification_columns);
}

std::size_t used_lines(const SpecificationLines& lines) {
    std::size_t used = lines.size();
    while (used > 0 && lines[used - 1].empty())
        --used;
    return used;
}

} // namespace

SpecificationLines split_specifications(std::string_view text) {
    SpecificationLines lines;
    for (std::string& line : lines)
        line = take_line(text);
    return lines;
}

std::string join_specifications(const SpecificationLines& lines) {
    std::string text;
    for (std::size_t row = 0; row < used_lines(lines); ++row)
        text += std::string(without_trailing_blanks(lines[row])) + line_end;
    return text;
}

namespace {

LineEdit row_of(const std::string& line) {
    return LineEdit(specification_columns, line, Typing::printable, FullField::pushes_out);
}

std::array<LineEdit, specification_rows> rows_of(const SpecificationLines& lines) {
    return {row_of(lines[0]), row_of(lines[1]), row_of(lines[2]), row_of(lines[3]), row_of(lines[4]),
            row_of(lines[5]), row_of(lines[6]), row_of(lines[7]), row_of(lines[8])};
}

} // namespace

SpecificationsEdit::SpecificationsEdit(std::string_view text)
    : text_{rows_of(split_specifications(text))}, step_(text_) {}

SpecificationLines SpecificationsEdit::lines() const {
    SpecificationLines lines;
    std::transform(text_.rows.begin(), text_.rows.end(), lines.begin(), [](const LineEdit& row) { return row.text(); });
    return lines;
}

namespace {

bool type_into(SpecificationsEdit& edit, const std::string& typed) { return edit.type(typed); }
bool row_up(SpecificationsEdit& edit, const std::string&) { return edit.row() > 0 && edit.go_to_row(edit.row() - 1); }
bool row_down(SpecificationsEdit& edit, const std::string&) { return edit.go_to_row(edit.row() + 1); }
bool clear_all(SpecificationsEdit& edit, const std::string&) { return edit.clear_all(); }
bool take_back(SpecificationsEdit& edit, const std::string&) { return edit.take_back(); }
bool bring_again(SpecificationsEdit& edit, const std::string&) { return edit.bring_again(); }

constexpr EditKey<SpecificationsEdit> edit_keys[] = {
    {{key::any_character},
     "are put in at the caret; of more than 23 in a line the last one drops off",
     type_into,
     "characters from blank to `~`"},
    {{}, "ends a line once the text is stored: what stands behind it becomes the next line", nullptr, "`]`"},
    {{key::left, key::right, key::home, key::end, key::backspace, key::delete_}, "as usual", type_into},
    {{key::up}, "the line above", row_up},
    {{key::down}, "the line below", row_down},
    {{key::tab}, "empties the whole text (not on the ninth line)", clear_all},
    {{key::undo}, "the text as it was when typing began", take_back, key::undo_label},
    {{key::redo}, "what was typed, again", bring_again, key::redo_label},
    {{key::enter}, "stores", nullptr},
    {{key::escape}, "leaves the text as it was", nullptr},
    {{}, "leaves the text as it was; a press elsewhere also acts there", nullptr, "a further mouse button"},
};

} // namespace

KeyHelpTable specification_keys() { return key_help("While the description is edited:", edit_keys); }

bool SpecificationsEdit::on_key(const std::string& key) {
    return edit_by_key<SpecificationsEdit>(*this, edit_keys, key);
}

bool SpecificationsEdit::type(const std::string& key) {
    const SpecificationLines before = lines();
    if (!text_.rows[text_.row].handle_key(key)) return false;
    if (lines() != before) step_.typed();
    return true;
}

bool SpecificationsEdit::go_to_row(std::size_t row) {
    if (row >= specification_rows) return false;
    const std::size_t column_before = column();
    text_.row = row;
    text_.rows[row].move_caret(column_before);
    return true;
}

// ODDITY tab-idle-on-last-line (kept): Tab empties the whole text, but on the ninth line it does nothing.
bool SpecificationsEdit::clear_all() {
    if (text_.row + 1 == specification_rows) return false;
    text_ = {rows_of({})};
    step_.typed();
    return true;
}

bool SpecificationsEdit::take_back() { return step_.take_back(text_); }
bool SpecificationsEdit::bring_again() { return step_.bring_again(text_); }

namespace {

constexpr Rectangle opening_area{750, 355, 937, 559};

} // namespace

bool over_specifications(int x, int y) { return opening_area.contains({x, y}); }

namespace {

void draw_lines(const SpecificationLines& lines, std::uint32_t ground, std::uint32_t text_colour) {
    fill_box(screen(), 745, 355, 943, 565, ground);
    for (std::size_t row = 0; row < lines.size(); ++row)
        draw_text(screen(), text_x, text_y + glyph_height * static_cast<int>(row), lines[row], text_colour);
}

void draw_edit(const SpecificationsEdit& edit) {
    draw_lines(edit.lines(), colour::pressed, edited_text_colour);
    const int x = text_x + glyph_width * static_cast<int>(edit.column());
    const int y = text_y + glyph_height * static_cast<int>(edit.row());
    draw_line(screen(), x, y, x, y + glyph_height - 1, caret_colour);
}

EditEnd edit_specifications() {
    SpecificationsEdit edit(CARINFO);
    const EditEnd end = run_edit(
        opening_area, [&] { draw_edit(edit); }, [&](const std::string& key) { return edit.on_key(key); }, TabKey::typed,
        [] { return std::vector{specification_keys()}; });
    if (end == EditEnd::stored) CARINFO = join_specifications(edit.lines());
    return end;
}

} // namespace

EditEnd EDITSPECS(int mode) {
    const EditEnd end = mode == 0 ? edit_specifications() : EditEnd::stored;
    const ScreenLock lock;
    draw_lines(split_specifications(CARINFO), colour::background, colour::value);
    return end;
}
