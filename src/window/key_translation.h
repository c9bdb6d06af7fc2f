// The one place where events become key strings.
#pragma once

#include "window/input_event.h"

#include <string>
#include <vector>

// The key strings that an event stands for, in order; none for most. Printable characters come from text events (so
// that layout, dead keys and Caps Lock have had their say), everything else from key-down events: Control with a letter
// gives its control character whatever Caps Lock says; text that arrives with Control or the left Alt key held is no
// typing. The keypad acts as the cursor block unless Num Lock gives its digits as text.
std::vector<std::string> key_strings(const InputEvent& event);
