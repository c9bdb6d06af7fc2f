// Pages that lie over the work area for a moment: what runs below does not notice.
#pragma once

#include "drawing/canvas.h"
#include "window/input.h"

#include <functional>
#include <optional>
#include <string>

// Where the text of a page stands: whole lines and cells.
constexpr Rectangle page_text{24, 64, 935, 575};
// The work area cleared, with a title over it, at its right what a person can do, and a frame around the text.
void draw_page(Canvas& canvas, const std::string& title, const std::string& heading, const std::string& hint);

// Draws the page, and again whenever `moved` says that a move of the mouse changed it, until a key is pressed or a
// button goes down; neither does anything else. Returns where the left button went down; none when something else ended
// it. The close request ends it, too, and stays unread. Then the work area shows what it showed before.
std::optional<Point> show_page(const std::function<void(Canvas&)>& draw,
                               const std::function<bool(const Input&)>& moved = {});
