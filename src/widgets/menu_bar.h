// The menu bar along the bottom edge: one cell a screen.
#pragma once

#include "image/image.h"
#include "window/window.h"

#include <cstdint>

// The screen that runs: 0 Files, 1 3D editor, 2 Dash manager, 3 Physical parameters, 255 quit.
extern std::uint8_t CURMENU;
namespace screen_number {
constexpr std::uint8_t files = 0, editor_3d = 1, dash_manager = 2, parameters = 3, quit = 255;
}

// The bar's icons, one per 48-pixel cell; null when they could not be loaded.
extern ImageHandle MENUIMG;

constexpr int menu_cell = 48;
constexpr int menu_cells = 4;

// Redraws the bar when the mouse moved on it, or always when forced. -1: the user picked another screen and CURMENU has
// changed; the mouse's x: the left button alone is down; 0 otherwise. The caller has read the mouse in this pass.
int MAINTAINMENU(bool force);

void reset_menu_bar();
