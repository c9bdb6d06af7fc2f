// The two fields of the Files screen: the folder, and what is loaded or saved. Their places on the screen, their focus
// and carets. A text longer than its field has room for is shown so that its caret can be seen, and where it has none
// from its start.
#pragma once

#include "drawing/canvas.h"
#include "widgets/line_edit.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

constexpr std::size_t field_limit = 62; // characters

enum class Field : std::uint8_t { directory, file };

class FileFields {
public:
    explicit FileFields(const std::string& directory);

    Field focus() const { return focus_; }
    const std::string& text(Field which) const { return field(which).text(); }
    // In the field that has the focus the caret goes behind the text.
    void put_text(Field which, const std::string& text);

    void switch_focus();
    // The focus goes there, and the caret to the gap between two characters that is nearest to a column of the screen.
    void click_into(Field which, int x);
    // The key goes to the field that has the focus; true when it changed something.
    bool handle_key(const std::string& key) { return focused().handle_key(key); }

    void keep_caret_in_view();
    void draw(Canvas& canvas) const;
    static void draw_labels(Canvas& canvas);
    // The field at a place, its label included.
    static std::optional<Field> at(Point place);

private:
    LineEdit& field(Field which) { return fields_[static_cast<std::size_t>(which)]; }
    const LineEdit& field(Field which) const { return fields_[static_cast<std::size_t>(which)]; }
    LineEdit& focused() { return field(focus_); }
    int first(Field which) const { return first_in_view_[static_cast<std::size_t>(which)]; }
    void draw_field(Field which, Canvas& canvas) const;

    std::array<LineEdit, 2> fields_;
    Field focus_ = Field::file;
    std::array<int, 2> first_in_view_{}; // character of each field
};
