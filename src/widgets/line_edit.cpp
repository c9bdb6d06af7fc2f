#include "widgets/line_edit.h"

#include "base/code_page.h"
#include "base/utf8.h"
#include "window/input.h"

#include <algorithm>
#include <utility>

LineEdit::LineEdit(std::size_t limit, std::string text, Typing typing, FullField full)
    : limit_(limit), text_(std::move(text)), typing_(typing), full_(full) {}

void LineEdit::set_text(std::string text) {
    text_ = std::move(text);
    move_caret(caret_);
}

void LineEdit::move_caret(std::size_t caret) { caret_ = start_of_character(std::min(caret, text_.size())); }

void LineEdit::move_caret_to_cell(std::size_t cell) {
    caret_ = typing_ == Typing::file_name ? utf8_characters(text_, 0, cell).size() : std::min(cell, text_.size());
}

std::string LineEdit::shown() const { return typing_ == Typing::file_name ? code_page_from_utf8(text_) : text_; }

std::size_t LineEdit::caret_cell() const {
    return typing_ == Typing::file_name ? utf8_count(std::string_view(text_).substr(0, caret_)) : caret_;
}

std::size_t LineEdit::length() const { return typing_ == Typing::file_name ? utf8_count(text_) : text_.size(); }

std::size_t LineEdit::start_of_character(std::size_t at) const {
    return typing_ == Typing::file_name ? utf8_start_of(text_, at) : at;
}

std::size_t LineEdit::behind_character(std::size_t at) const {
    return typing_ == Typing::file_name && at < text_.size() ? at + utf8_character_at(text_, at).length : at + 1;
}

void LineEdit::caret_to_end() { caret_ = text_.size(); }

bool LineEdit::handle_key(const std::string& key) {
    if (key == key::left) return caret_ > 0 && step_caret(caret_ - 1);
    if (key == key::right) return step_caret(behind_character(caret_));
    if (key == key::home) return step_caret(0);
    if (key == key::end) return step_caret(text_.size());
    if (key == key::backspace) return backspace();
    if (key == key::delete_) return erase(caret_);
    return accepts(key) && insert(key[0]);
}

bool LineEdit::accepts(const std::string& key) const {
    if (typing_ == Typing::digits) return key.size() == 1 && key[0] >= '0' && key[0] <= '9';
    return key::printable(key);
}

bool LineEdit::insert(char character) {
    if (full() && (full_ == FullField::refuses || caret_ >= limit_)) return false;
    text_.insert(caret_, 1, character);
    if (full_ == FullField::pushes_out && text_.size() > limit_) text_.pop_back();
    return step_caret(caret_ + 1);
}

bool LineEdit::step_caret(std::size_t caret) {
    const std::size_t before = caret_;
    move_caret(caret);
    return caret_ != before;
}

bool LineEdit::erase(std::size_t at) {
    if (at >= text_.size()) return false;
    text_.erase(at, behind_character(at) - at);
    move_caret(caret_); // bytes that belonged to no character may be one now
    return true;
}

bool LineEdit::backspace() {
    if (caret_ == 0) return false;
    caret_ = start_of_character(caret_ - 1);
    return erase(caret_);
}
