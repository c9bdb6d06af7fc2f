// The page of keys: what every key and the mouse do in a loop, in columns on the work area. What does nothing now is
// grey.
#pragma once

#include "widgets/key_table.h"

#include <cstdint>
#include <string>
#include <vector>

constexpr std::uint32_t idle_key_colour = 0xFF8C6E78; // of keys that do nothing now

// An entry of the page, laid out: a heading, or keys with what they do, each in lines one below the other.
struct PlacedKeys {
    int x = 0, y = 0, words_x = 0;
    std::vector<std::string> keys, words;
    bool is_heading = false, works = true;
};
// In as few columns as hold all of it, three at most; no entry is split. What finds no room is left out.
std::vector<PlacedKeys> lay_out_keys(const std::vector<KeyHelpTable>& tables);

// Shows the page until a key is pressed or a button goes down (page.h).
void show_key_page(const std::vector<KeyHelpTable>& tables);
