// The rows of the converter's own text files: words, and texts in quotes, separated by blanks and tabs; "#" outside
// quotes starts a comment, rows without a word are skipped. The files are UTF-8, the texts of a car are of code page
// 437.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

struct TextWord {
    std::string text; // of a quoted one the characters of the code page, without the escapes
    bool quoted = false;
};

struct TextRow {
    int line = 0; // counted from 1
    std::vector<TextWord> words;

    // Throws a Refusal that names the line.
    [[noreturn]] void refuse(const std::string& why) const;
    // These refuse when there is no such word, or it is none of the kind that is asked for.
    const std::string& word(std::size_t at) const;
    const std::string& quoted(std::size_t at) const;
    long number(std::size_t at, long least, long most) const;
    // The same of a part of a word, such as the numbers in "12,34".
    long number_in(std::string_view text, long least, long most) const;
    void expect_words(std::size_t count) const;
};

// Refuses texts that are not closed, unknown escapes and characters that the code page does not have.
std::vector<TextRow> read_text_rows(std::string_view text);

// A text of the code page in quotes, so that it reads back as the same bytes: characters as UTF-8, quotes and
// backslashes behind a backslash, what is no visible character as "\xNN".
std::string quoted_text(std::string_view bytes);
