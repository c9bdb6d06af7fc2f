// One line of text with a caret: what every place where a person types shares.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// Which characters a field takes.
enum class Typing : std::uint8_t {
    printable, // " " to "~"
    digits,    // "0" to "9"
    file_name, // " " to "~", in a text whose characters may have several bytes: UTF-8
};

// What a character does that is typed into a full field.
enum class FullField : std::uint8_t {
    refuses,   // nothing
    pushes_out // it is put in at the caret, and the last character of the line goes
};

class LineEdit {
public:
    // Takes characters while the text is shorter than `limit`. A longer text given from outside stays whole. The caret
    // starts at the front.
    explicit LineEdit(std::size_t limit, std::string text = {}, Typing typing = Typing::printable,
                      FullField full = FullField::refuses);

    const std::string& text() const { return text_; }
    std::size_t caret() const { return caret_; } // 0 .. length, never inside a character
    std::size_t limit() const { return limit_; }
    bool full() const { return length() >= limit_; }
    // The text as the font shows it, one character a cell, and the cell before which the caret stands.
    std::string shown() const;
    std::size_t caret_cell() const;

    // The whole text anew; the caret is kept inside it.
    void set_text(std::string text);
    void move_caret(std::size_t caret); // kept inside the text
    void move_caret_to_cell(std::size_t cell);
    void caret_to_end();

    // Cursor left and right, Home, End, Backspace, Delete, and a character that the field takes. True when text or
    // caret changed.
    bool handle_key(const std::string& key);

    bool operator==(const LineEdit&) const = default;

private:
    bool accepts(const std::string& key) const;
    bool insert(char character);
    bool step_caret(std::size_t caret);
    bool erase(std::size_t at);
    bool backspace();
    std::size_t length() const; // in characters
    std::size_t start_of_character(std::size_t at) const;
    std::size_t behind_character(std::size_t at) const;

    std::size_t limit_;
    std::string text_;
    std::size_t caret_ = 0;
    Typing typing_;
    FullField full_;
};
