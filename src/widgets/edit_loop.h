// Editing in place: the nested loop that runs while a person types into a field of a screen.
#pragma once

#include "drawing/canvas.h"
#include "widgets/key_scope.h"

#include <cstdint>
#include <functional>
#include <string>

// Why an edit ended. Only `stored` and `next` store.
enum class EditEnd : std::uint8_t {
    stored,  // Enter
    next,    // Tab, where it leads on to the next field
    escaped, // Escape
    closed,  // the window's close request, which stays unread, so that the loop of the screen sees it next
    pressed  // a further mouse button; those down at the start count once they were released
};

// Draws the field, then hands it one key after another and draws it again whenever `on_key` says that something
// changed, until the edit ends. Both ways to bring something again arrive as key::redo. The press that ends it acts
// next where it went down, on the screen around; inside `field`, it is spent. So is a button that is still down after
// Enter or Escape.
enum class TabKey : std::uint8_t { typed, leads_on }; // whether on_key is given it, or it ends the edit
EditEnd run_edit(const Rectangle& field, const std::function<void()>& draw,
                 const std::function<bool(const std::string&)>& on_key, TabKey tab = TabKey::typed,
                 const KeyScope::Tables& keys = {});
