#include "params/target_edit.h"
#include "model/document.h"

#include "base/reset.h"
#include "model/parameters.h"
#include "model/power_gear.h"
#include "widgets/strip.h"
#include "widgets/widgets.h"
#include "window/input.h"
#include "window/window.h"

#include <optional>
#include <utility>
#include <vector>

namespace {

constexpr std::uint32_t hovered_value_colour = 0xFF00FA00;
constexpr std::uint32_t typed_text_colour = 0xFF64FF64;
constexpr std::uint32_t caret_colour = 0xFFB4FFB4;
constexpr std::size_t shown_name_length = 21;
constexpr int number_width = 5;
constexpr int option_width = 20;

// What a row looked like when it was drawn.
struct DrawnTarget {
    std::string text;
    bool hovered = false;

    bool operator==(const DrawnTarget&) const = default;
};

struct Memory {
    MouseState seen{0, 0, 0, 0};
    Table<std::optional<DrawnTarget>, 1, 100> drawn;
};

Memory& memory() {
    static Memory only;
    return only;
}

bool is_name(const PARAMINPUT& target) {
    return target.type == target_type::car_name || target.type == target_type::sign_name;
}

std::string& name_of(const PARAMINPUT& target) { return target.type == target_type::car_name ? CARNAME : CARSIGNNAME; }

std::string option_text(const PARAMINPUT& target) {
    const long at = static_cast<long>(target.option_base) + target.minimum + POWERGEAR;
    return at >= 0 && at < static_cast<long>(TEXTOPTION.size()) ? TEXTOPTION[static_cast<std::size_t>(at)] : "?";
}

} // namespace

std::string target_text(const PARAMINPUT& target) {
    switch (target.type) {
    case target_type::option: return option_text(target);
    case target_type::byte: return std::to_string(par_byte(target.offset));
    case target_type::word: return std::to_string(par_word(target_word_offset(target.offset)));
    case target_type::car_name:
    case target_type::sign_name: return name_of(target).substr(0, shown_name_length);
    default: return "?";
    }
}

int target_box_width(const PARAMINPUT& target) {
    if (target.type == target_type::option) return option_width;
    return is_name(target) ? target.maximum : number_width;
}

Rectangle target_area(const PARAMINPUT& target) {
    return {target.label_x, target.label_y, target.label_x + glyph_width * target.width - 1,
            target.label_y + glyph_height - 1};
}

bool over_target(const PARAMINPUT& target, int x, int y) { return target_area(target).contains({x, y}); }

namespace {

void clear_value_box(const PARAMINPUT& target) {
    fill_box(screen(), target.value_x, target.value_y, target.value_x + glyph_width * target_box_width(target) - 1,
             target.value_y + glyph_height - 1, colour::background);
}

void draw_target(const PARAMINPUT& target, const DrawnTarget& look) {
    draw_text(screen(), target.label_x, target.label_y, target.label, look.hovered ? colour::title : colour::label);
    clear_value_box(target);
    draw_text(screen(), target.value_x, target.value_y, look.text, look.hovered ? hovered_value_colour : colour::value);
}

bool hovered(const PARAMINPUT& target) { return over_target(target, mouse().x, mouse().y); }

// The last row that is clicked, 0 when none is.
int clicked_row(int first, int last) {
    if (mouse().buttons != 1) return 0;
    for (int row = last; row >= first; --row)
        if (hovered(PTARGET[row])) return row;
    return 0;
}

// The next row of the same section that a person types into: the nearest one below, or the section's first.
int row_below(int row, int first, int last) {
    int below = 0, top = row;
    for (int other = first; other <= last; ++other) {
        const PARAMINPUT& candidate = PTARGET[other];
        if (candidate.label_x != PTARGET[row].label_x || candidate.type == target_type::option) continue;
        if (candidate.label_y < PTARGET[top].label_y) top = other;
        const bool lower = candidate.label_y > PTARGET[row].label_y;
        if (lower && (below == 0 || candidate.label_y < PTARGET[below].label_y)) below = other;
    }
    return below != 0 ? below : top;
}

} // namespace

void draw_targets(int first, int last, bool pointed) {
    const ScreenLock lock;
    for (int row = first; row <= last; ++row) {
        const DrawnTarget look{target_text(PTARGET[row]), pointed && hovered(PTARGET[row])};
        if (memory().drawn[row] == look) continue;
        draw_target(PTARGET[row], look);
        memory().drawn[row] = look;
    }
}

void forget_drawn_targets() { memory().drawn = {}; }

unsigned MAINTAINTARGETS(int first, int last, bool opens) {
    if (mouse() == memory().seen) return 0;
    draw_targets(first, last);
    memory().seen = mouse();
    int row = opens ? clicked_row(first, last) : 0;
    if (row == 0) return 0;
    while (EDITTARGET(row) == EditEnd::next) {
        draw_targets(first, last);
        row = row_below(row, first, last);
    }
    draw_targets(first, last);
    return 1;
}

namespace {

LineEdit field_of(const PARAMINPUT& target) {
    const bool name = is_name(target);
    const auto limit = static_cast<std::size_t>(name ? target.maximum : number_width);
    std::string text = name ? name_of(target).substr(0, limit) : target_text(target);
    LineEdit field(limit, std::move(text), name ? Typing::printable : Typing::digits);
    field.caret_to_end();
    return field;
}

// Of at most five digits.
int number_in(const std::string& digits) { return digits.empty() ? 0 : std::stoi(digits); }

} // namespace

TargetEntry::TargetEntry(const PARAMINPUT& target) : target_(target), field_(field_of(target)), step_(field_) {}

bool TargetEntry::is_number() const { return !is_name(target_); }

namespace {

bool type_into(TargetEntry& entry, const std::string& typed) { return entry.type(typed); }
bool take_back(TargetEntry& entry, const std::string&) { return entry.take_back(); }
bool bring_again(TargetEntry& entry, const std::string&) { return entry.bring_again(); }

constexpr EditKey<TargetEntry> entry_keys[] = {
    {{key::any_character},
     "are put in at the caret while there is room and the number stays in its range",
     type_into,
     "digits; in names the characters from blank to `~`"},
    {{key::left, key::right, key::home, key::end, key::backspace, key::delete_}, "as usual", type_into},
    {{key::enter}, "stores", nullptr},
    {{key::tab}, "stores, and opens the next row of the section", nullptr},
    {{key::undo}, "the text as it was when typing began", take_back, key::undo_label},
    {{key::redo}, "what was typed, again", bring_again, key::redo_label},
    {{key::escape}, "leaves the value as it was", nullptr},
    {{}, "leaves the value as it was; a press elsewhere also acts there", nullptr, "a further mouse button"},
};

} // namespace

KeyHelpTable target_entry_keys() { return key_help("While a value is edited:", entry_keys); }

bool TargetEntry::on_key(const std::string& key) { return edit_by_key<TargetEntry>(*this, entry_keys, key); }

void TargetEntry::say_how_much() const {
    say(std::to_string(target_.maximum) + (is_number() ? " at most" : " characters at most"));
}

bool TargetEntry::type(const std::string& key) {
    const LineEdit before = field_;
    if (!field_.handle_key(key)) {
        if (key::printable(key) && field_.full()) say_how_much();
        return false;
    }
    if (field_.text() != before.text()) step_.typed();
    if (!is_number()) return true;
    if (field_.text().size() > before.text().size()) return settle_typed_digit(before);
    if (field_.text().size() < before.text().size()) settle_deletion();
    return true;
}

bool TargetEntry::take_back() { return step_.take_back(field_); }
bool TargetEntry::bring_again() { return step_.bring_again(field_); }

// A number that would be too large is refused; one leading zero goes.
bool TargetEntry::settle_typed_digit(const LineEdit& before) {
    if (number_in(field_.text()) > target_.maximum) {
        field_ = before;
        say_how_much();
        return false;
    }
    if (field_.text().front() == '0') {
        field_.set_text(field_.text().substr(1));
        field_.move_caret(before.caret());
    }
    return true;
}

void TargetEntry::settle_deletion() {
    if (!field_.text().empty() && number_in(field_.text()) >= target_.minimum) return;
    field_.set_text(std::to_string(target_.minimum));
    field_.caret_to_end();
}

void TargetEntry::store() const {
    if (is_name(target_)) {
        name_of(target_) = field_.text();
        return;
    }
    const int number = number_in(field_.text());
    if (target_.type == target_type::byte)
        set_par_byte(target_.offset, static_cast<std::uint8_t>(number));
    else
        set_par_word(target_word_offset(target_.offset), static_cast<std::uint16_t>(number));
}

namespace {

void fill_edit_box(const PARAMINPUT& target, const LineEdit& field, std::uint32_t ground) {
    fill_box(screen(), target.value_x - glyph_width, target.value_y - 1,
             target.value_x + glyph_width * static_cast<int>(field.limit()) + glyph_width,
             target.value_y + glyph_height - 1, ground);
}

void draw_entry(const PARAMINPUT& target, const LineEdit& field) {
    fill_edit_box(target, field, colour::pressed);
    draw_text(screen(), target.value_x, target.value_y, field.text(), typed_text_colour);
    const int x = target.value_x + glyph_width * static_cast<int>(field.caret());
    draw_line(screen(), x, target.value_y, x, target.value_y + glyph_height - 1, caret_colour);
}

// A name from a file may be longer than its box: nothing of it stays beside the edit.
void clear_shown_text(const PARAMINPUT& target) {
    const int length = static_cast<int>(target_text(target).size());
    if (length <= target_box_width(target)) return;
    fill_box(screen(), target.value_x, target.value_y, target.value_x + glyph_width * length - 1,
             target.value_y + glyph_height - 1, colour::background);
}

void store_entry(const PARAMINPUT& target, const TargetEntry& entry) {
    entry.store();
    if (&target == &PTARGET[mass_row]) UPDATEPG(false);
}

EditEnd edit_entry(const PARAMINPUT& target) {
    clear_shown_text(target);
    TargetEntry entry(target);
    const EditEnd end = run_edit(
        target_area(target), [&] { draw_entry(target, entry.field()); },
        [&](const std::string& key) { return entry.on_key(key); }, TabKey::leads_on,
        [] { return std::vector{target_entry_keys()}; });
    if (end == EditEnd::stored || end == EditEnd::next) store_entry(target, entry);
    const ScreenLock lock;
    fill_edit_box(target, entry.field(), colour::background);
    return end;
}

// The next choice, once the button is released; none when the window is closed meanwhile.
EditEnd step_option(PARAMINPUT& target) {
    {
        const ScreenLock lock;
        clear_value_box(target);
    }
    if (!wait_for_release()) return EditEnd::closed;
    POWERGEAR = (POWERGEAR + 1) % (target.maximum + 1);
    UPDATEPG(true);
    return EditEnd::stored;
}

} // namespace

EditEnd EDITTARGET(int row) {
    PARAMINPUT& target = PTARGET[row];
    const EditEnd end = target.type == target_type::option ? step_option(target) : edit_entry(target);
    forget_drawn_targets();
    return end;
}

void reset_targets() { memory() = Memory{}; }

namespace {
const ResetWithProgram registered(reset_targets);
}
