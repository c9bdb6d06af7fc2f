// What holds on every screen and in every edit: the keys for looking at the keys and at the checks of the car.
#pragma once

#include "widgets/key_table.h"
#include "window/input.h"

// What they do, as a table for a person.
KeyHelpTable everywhere_keys();
// Does what a key does that holds everywhere. False for all others.
bool act_everywhere(const Input& input);
// A file or directory that was dropped on a screen that has no use for it: the Files screen reads it next.
void load_dropped(const Input& input);
