#include "widgets/key_table.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

struct Counter {
    int count = 0;
};

bool add(Counter& counter, const std::string& typed) {
    counter.count += static_cast<int>(typed.size());
    return counter.count % 2 == 1;
}

constexpr EditKey<Counter> keys[] = {
    {{key::left, "x", key::ctrl<'C'>}, "first", add},
    {{"x"}, "never reached", nullptr},
    {{key::any_character}, "types", add},
    {{key::enter}, "belongs to the loop", nullptr},
    {{}, "is done with the mouse", nullptr, "a click"},
};

const char* words_for(const std::string& typed) {
    const auto* row = row_of(std::span<const EditKey<Counter>>(keys), typed);
    return row ? row->words : "";
}

} // namespace

TEST(KeyTable, FindsTheFirstRowOfAKey) {
    EXPECT_STREQ(words_for("x"), "first");
    EXPECT_STREQ(words_for(key::left), "first");
    EXPECT_STREQ(words_for("\x03"), "first");
    EXPECT_STREQ(words_for(key::enter), "belongs to the loop");
    EXPECT_STREQ(words_for(key::right), "");
    EXPECT_STREQ(words_for(""), "");
}

TEST(KeyTable, AnyCharacterIsEveryOneFromBlankToTilde) {
    for (int code = 0; code < 256; ++code) {
        if (code == 3 || code == 13 || code == 'x') continue;
        const std::string typed(1, static_cast<char>(code));
        EXPECT_STREQ(words_for(typed), code >= ' ' && code <= '~' ? "types" : "") << code;
    }
}

TEST(KeyTable, AnEditIsToldTheKey) {
    Counter counter;
    EXPECT_TRUE(edit_by_key<Counter>(counter, keys, "a"));
    EXPECT_FALSE(edit_by_key<Counter>(counter, keys, "b"));
    EXPECT_TRUE(edit_by_key<Counter>(counter, keys, "c"));
    EXPECT_FALSE(edit_by_key<Counter>(counter, keys, key::enter));
    EXPECT_FALSE(edit_by_key<Counter>(counter, keys, key::right));
    EXPECT_EQ(counter.count, 3);
}

TEST(KeyTable, NamesKeysAsPeopleDo) {
    EXPECT_EQ(names_of({key::tab, key::up, key::down}), "Tab, cursor up, cursor down");
    EXPECT_EQ(names_of({key::ctrl<'A'>, key::ctrl<'Z'>, "z", " ", "~"}), "Ctrl+A, Ctrl+Z, z, Space, ~");
    EXPECT_EQ(names_of({key::escape, key::close_window}), "Escape");
    EXPECT_EQ(names_of({key::any_character, key::backspace, key::delete_, key::insert, key::shift_tab, key::f1}),
              "characters, Backspace, Delete, Insert, Shift+Tab, F1");
    EXPECT_EQ(names_of({key::home, key::end, key::page_up, key::page_down, key::left, key::right}),
              "Home, End, Page Up, Page Down, cursor left, cursor right");
    EXPECT_EQ(names_of({}), "");
}

TEST(KeyTable, IsReadByPeopleRowByRow) {
    const KeyHelpTable help = key_help("Here:", keys);
    EXPECT_EQ(help.heading, "Here:");
    ASSERT_EQ(help.rows.size(), 5U);
    EXPECT_EQ(help.rows[0], (KeyHelp{"cursor left, x, Ctrl+C", "first"}));
    EXPECT_EQ(help.rows[4], (KeyHelp{"a click", "is done with the mouse"}));
}
