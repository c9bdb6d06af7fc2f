#include "convert/text_rows.h"

#include "base/code_page.h"
#include "base/text.h"
#include "base/utf8.h"
#include "convert/refusal.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <utility>

namespace {

constexpr std::string_view blanks = " \t";
constexpr std::string_view hexadecimal = "0123456789ABCDEF";
constexpr unsigned char hard_blank = 255; // looks like a blank

bool needs_number(unsigned char c) { return c < ' ' || c == 127 || c == hard_blank; }

// Takes the words off one line.
class LineReader {
public:
    LineReader(int number, std::string_view line) : line_(line) { row_.line = number; }

    TextRow read() {
        for (skip_blanks(); at_ < line_.size() && line_[at_] != '#'; skip_blanks())
            row_.words.push_back(line_[at_] == '"' ? take_text() : take_word());
        return std::move(row_);
    }

private:
    void skip_blanks() { at_ = std::min(line_.find_first_not_of(blanks, at_), line_.size()); }

    TextWord take_word() {
        const std::size_t end = std::min(line_.find_first_of(" \t\"#", at_), line_.size());
        TextWord word{std::string(line_.substr(at_, end - at_))};
        at_ = end;
        return word;
    }

    TextWord take_text() {
        TextWord word{.text = {}, .quoted = true};
        for (++at_; character() != '"';)
            word.text += character() == '\\' ? take_escape() : take_character();
        ++at_;
        return word;
    }

    char character() const {
        if (at_ >= line_.size()) row_.refuse("a text without its closing quote");
        return line_[at_];
    }

    char take_character() {
        const auto [code, length] = utf8_character_at(line_, at_);
        const unsigned char shown = code_page_437(code);
        if (shown == 0) row_.refuse("a character that code page 437 does not have");
        at_ += length;
        return static_cast<char>(shown);
    }

    char take_escape() {
        ++at_;
        const char escaped = character();
        ++at_;
        if (escaped == '"' || escaped == '\\') return escaped;
        if (escaped != 'x') row_.refuse("after a backslash come a quote, a backslash or xNN");
        int value = 0;
        const std::string_view digits = line_.substr(at_, 2);
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
        if (error != std::errc() || end != digits.data() + 2) row_.refuse("\\x is followed by two hexadecimal digits");
        at_ += 2;
        return static_cast<char>(value);
    }

    std::string_view line_;
    std::size_t at_ = 0;
    TextRow row_;
};

} // namespace

void TextRow::refuse(const std::string& why) const { throw Refusal("line " + std::to_string(line) + ": " + why); }

const std::string& TextRow::word(std::size_t at) const {
    if (at >= words.size()) refuse("something is missing at its end");
    if (words[at].quoted) refuse("quotes around \"" + utf8_from_code_page(words[at].text) + "\"");
    return words[at].text;
}

const std::string& TextRow::quoted(std::size_t at) const {
    if (at >= words.size() || !words[at].quoted) refuse("a text in quotes is missing");
    return words[at].text;
}

long TextRow::number(std::size_t at, long least, long most) const { return number_in(word(at), least, most); }

long TextRow::number_in(std::string_view text, long least, long most) const {
    long value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        refuse("\"" + std::string(text) + "\" is no whole number");
    if (value < least || value > most)
        refuse(std::string(text) + " is not within " + std::to_string(least) + " to " + std::to_string(most));
    return value;
}

void TextRow::expect_words(std::size_t count) const {
    if (words.size() < count) refuse("something is missing at its end");
    if (words.size() > count) refuse("too much at its end");
}

std::vector<TextRow> read_text_rows(std::string_view text) {
    constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
    if (text.starts_with(byte_order_mark)) text.remove_prefix(byte_order_mark.size());
    std::vector<TextRow> rows;
    std::string_view line;
    for (int number = 1; next_line(text, line); ++number) {
        TextRow row = LineReader(number, line).read();
        if (!row.words.empty()) rows.push_back(std::move(row));
    }
    return rows;
}

std::string quoted_text(std::string_view bytes) {
    std::string text = "\"";
    for (const char c : bytes) {
        const auto code = static_cast<unsigned char>(c);
        if (needs_number(code)) {
            text += "\\x";
            text += hexadecimal[code >> 4];
            text += hexadecimal[code & 15];
            continue;
        }
        if (c == '"' || c == '\\') text += '\\';
        text += utf8_from_code_page({&c, 1});
    }
    return text + '"';
}
