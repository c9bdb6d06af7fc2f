// A screen that has a title and the menu bar, and nothing else to do yet.
#pragma once

#include "widgets/key_table.h"

#include <string>
#include <vector>

// Runs until another screen is picked in the menu bar, or Escape or the close request ends the program (CURMENU = 255).
void run_title_screen(const std::string& title);
std::vector<KeyHelpTable> title_screen_keys();
