// One line of text with a caret: what every place where a person types shares.
#pragma once

#include <cstddef>
#include <string>

class LineEdit {
public:
    // Takes characters while the text is shorter than `limit`.
    explicit LineEdit(std::size_t limit, std::string text = {});

    const std::string& text() const { return text_; }
    std::size_t caret() const { return caret_; } // 0 .. length
    std::size_t limit() const { return limit_; }

    // The whole text anew; the caret is kept inside it.
    void set_text(std::string text);
    void move_caret(std::size_t caret); // kept inside the text
    void caret_to_end();

    // Cursor left and right, Home, End, Backspace, Delete, and a printable character. True when text or caret changed.
    bool handle_key(const std::string& key);

private:
    bool insert(char character);

    std::size_t limit_;
    std::string text_;
    std::size_t caret_ = 0;
};
