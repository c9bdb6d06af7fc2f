// Editing in place: the loop that runs while a person types into a field of a screen.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

// Why an edit ended. Only `stored` stores.
enum class EditEnd : std::uint8_t {
    stored,  // Enter
    escaped, // Escape
    closed,  // the window's close request, which stays unread, so that the loop of the screen sees it next
    pressed  // a further mouse button; those down at the start count once they were released
};

// Draws the field, then hands it one key after another and draws it again whenever `on_key` says that something
// changed, until the edit ends.
EditEnd run_edit(const std::function<void()>& draw, const std::function<bool(const std::string&)>& on_key);

// Reads until no button is down. Keys typed meanwhile are dropped. False on the close request, which stays unread.
bool wait_for_release();
