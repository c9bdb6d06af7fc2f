// Keys as constant data: one table a screen, and one each of its modes. A row says which keys, in words for a person
// what they do, what is called, and whether that does anything now. The dispatch goes by these rows, and so does every
// list of keys that a person reads.
#pragma once

#include "window/key_strings.h"

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace key {
// In a row: any character from " " to "~". No keyboard sends this string.
inline constexpr const char* any_character = "\xFF*";
} // namespace key

// The keys of one row; those that are not needed stay null.
using RowKeys = std::array<const char*, 10>;

bool names_key(const RowKeys& keys, std::string_view typed);
// As a person calls them, one after the other: "Tab, cursor up". The close request, which is no key, is left out.
std::string names_of(const RowKeys& keys);

// What an action acts on.
template <class Action>
struct ActionState;
template <class Result, class State, class... More>
struct ActionState<Result (*)(State&, More...)> {
    using Type = State;
};

template <class Action>
struct KeyRow {
    using Works = bool (*)(const typename ActionState<Action>::Type&);

    RowKeys keys{};              // none in a row that only tells what the mouse does
    const char* words = "";      // what they do
    Action action = nullptr;     // null where the keys belong to the loop itself
    const char* label = nullptr; // what a person is to do, where the names of the keys do not say it
    Works works = nullptr;       // whether they do anything now; null: always
};

// A key of a screen. What it needs of the mouse and the qualifiers is in state.input.
template <class State>
using KeyBinding = KeyRow<void (*)(State&)>;
// A key of something that is edited; true when it changed something.
template <class Edit>
using EditKey = KeyRow<bool (*)(Edit&, const std::string& typed)>;

// The row for a key that was typed, the first of several; null when there is none.
template <class Row>
const Row* row_of(std::span<const Row> table, std::string_view typed) {
    for (const Row& row : table)
        if (names_key(row.keys, typed)) return &row;
    return nullptr;
}

// A key was typed that no row knows: the strip says where the keys are told.
void say_where_keys_are();

// What a key does to what is edited; true when that changed something.
template <class Edit>
bool edit_by_key(Edit& edit, std::span<const EditKey<Edit>> table, const std::string& typed) {
    const EditKey<Edit>* const row = row_of(table, typed);
    if (!row && !typed.empty()) say_where_keys_are();
    return row && row->action && row->action(edit, typed);
}

// A table as a person reads it.
struct KeyHelp {
    std::string keys, words;
    bool works = true; // they do something now
    bool operator==(const KeyHelp&) const = default;
};
struct KeyHelpTable {
    std::string heading; // when these keys hold; "" for the screen's own
    std::vector<KeyHelp> rows;
};

template <class Row>
KeyHelpTable key_help(const std::string& heading, std::span<const Row> table) {
    KeyHelpTable help{heading, {}};
    for (const Row& row : table)
        help.rows.push_back({row.label ? row.label : names_of(row.keys), row.words});
    return help;
}
template <class Row, std::size_t rows>
KeyHelpTable key_help(const std::string& heading, const Row (&table)[rows]) {
    return key_help(heading, std::span<const Row>(table));
}
// The same as it is now, with what the keys do nothing to marked.
template <class Row, class State>
KeyHelpTable key_help_now(const std::string& heading, std::span<const Row> table, const State& state) {
    KeyHelpTable help = key_help(heading, table);
    for (std::size_t i = 0; i < table.size(); ++i)
        help.rows[i].works = !table[i].works || table[i].works(state);
    return help;
}
