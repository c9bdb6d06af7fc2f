// What goes with every screen while a person works: undo and redo, what is known of saved work, keeping the unsaved.
#pragma once

#include "widgets/key_table.h"
#include "widgets/screen_loop.h"

#include <vector>

// The car as it is now is the one in which nothing can be taken back. What the screens' loop is to call from now on.
LoopHooks begin_editing();
// The program ends, in whatever way: unsaved work is kept when this returns. Does no harm when it has ended before.
void end_editing();
// The keys that it has on every screen.
std::vector<KeyHelp> editing_keys();
