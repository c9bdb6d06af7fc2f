// The car's description text in its box of the parameter screen: nine lines of 23 characters.
#pragma once

#include "drawing/drawing.h"
#include "widgets/edit_loop.h"
#include "widgets/key_table.h"
#include "widgets/line_edit.h"
#include "widgets/undo_keys.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

constexpr std::size_t specification_rows = 9;
constexpr std::size_t specification_columns = 23;
using SpecificationLines = std::array<std::string, specification_rows>;

// The lines of a description, each cut to 23 characters: "]" ends a line, a rest without one is the last line. What
// comes after the ninth line is dropped; lines that the text does not have are empty.
SpecificationLines split_specifications(std::string_view text);
// The description of these lines: empty ones at the end are dropped, then each loses its trailing blanks and is ended
// by a "]".
std::string join_specifications(const SpecificationLines& lines);

// The text while it is edited. Every row remembers its own text; the caret is the current row's.
class SpecificationsEdit {
public:
    explicit SpecificationsEdit(std::string_view text);

    std::size_t row() const { return text_.row; }
    std::size_t column() const { return text_.rows[text_.row].caret(); }
    SpecificationLines lines() const;
    // Every key but those that end the edit. True when something changed.
    bool on_key(const std::string& key);
    // What the keys do.
    bool type(const std::string& key); // in the current row
    bool go_to_row(std::size_t row);   // nothing past the last
    bool clear_all();                  // not from the last row
    bool take_back();
    bool bring_again();

private:
    struct Text {
        std::array<LineEdit, specification_rows> rows;
        std::size_t row = 0;

        bool operator==(const Text&) const = default;
    };

    Text text_;
    TypedStep<Text> step_;
};

// Whether a click at this place opens the text.
bool over_specifications(int x, int y);

// Mode 0: edits CARINFO in its box until the person stores or leaves, then shows it. Any other mode: shows it. Returns
// why the edit ended; `stored` when nothing was edited.
EditEnd EDITSPECS(int mode);
// The keys while it is edited.
KeyHelpTable specification_keys();
