#include "widgets/key_table.h"

#include "widgets/strip.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::array<std::pair<std::string_view, const char*>, 20> names{{{key::escape, "Escape"},
                                                                          {key::enter, "Enter"},
                                                                          {key::backspace, "Backspace"},
                                                                          {key::tab, "Tab"},
                                                                          {key::shift_tab, "Shift+Tab"},
                                                                          {key::home, "Home"},
                                                                          {key::end, "End"},
                                                                          {key::up, "cursor up"},
                                                                          {key::down, "cursor down"},
                                                                          {key::left, "cursor left"},
                                                                          {key::right, "cursor right"},
                                                                          {key::page_up, "Page Up"},
                                                                          {key::page_down, "Page Down"},
                                                                          {key::insert, "Insert"},
                                                                          {key::delete_, "Delete"},
                                                                          {key::any_character, "characters"},
                                                                          {" ", "Space"},
                                                                          {key::f1, "F1"},
                                                                          {key::f2, "F2"},
                                                                          {key::close_window, ""}}};

std::string name_of(std::string_view typed) {
    const auto named = std::ranges::find(names, typed, &std::pair<std::string_view, const char*>::first);
    if (named != names.end()) return named->second;
    if (key::printable(typed)) return std::string(typed);
    return std::string("Ctrl+") + static_cast<char>('A' + typed.front() - 1);
}

} // namespace

bool names_key(const RowKeys& keys, std::string_view typed) {
    return std::ranges::any_of(keys, [&](const char* one) {
        return one && (typed == one || (one == std::string_view(key::any_character) && key::printable(typed)));
    });
}

std::string names_of(const RowKeys& keys) {
    std::string all;
    for (const char* one : keys) {
        const std::string name = one ? name_of(one) : "";
        if (!name.empty()) all += all.empty() ? name : ", " + name;
    }
    return all;
}

void say_where_keys_are() { say("F1 shows the keys"); }
