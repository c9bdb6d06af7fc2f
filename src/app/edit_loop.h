// Editing in place: the loop that runs while a person types into a field of a screen.
#pragma once

#include <functional>
#include <string>

// Draws the field, then hands it one key after another and draws it again whenever `on_key` says that something
// changed, until the edit ends. True when it ended by Enter: the caller stores. False on Escape, on a mouse button
// pressed further (those down at the start count once they were released), and on the window's close request, which
// stays unread, so that the loop of the screen sees it next.
bool run_edit(const std::function<void()>& draw, const std::function<bool(const std::string&)>& on_key);
