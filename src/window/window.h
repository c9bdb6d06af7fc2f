// The window: its picture, its title, and the moment at which a frame becomes visible.
#pragma once

#include "drawing/drawing.h"

#include <string>

constexpr int screen_width = 960;
constexpr int screen_height = 648;
constexpr int menu_top = 600; // of the menu bar's strip, down to the lower edge; above lies the screens' work area

// Opens the window of the backend in use with a black picture. False, with one line of reason in `error`, when that
// fails; drawing works all the same.
bool open_screen(std::string& error);
// Fixes the text grid; print_text wraps at its width.
void set_text_grid(int columns, int rows);
// The title's bytes are characters of code page 437, as in all texts.
void set_window_title(const std::string& title);
const std::string& window_title();

// The picture that everything is drawn on. Lives for the whole run.
Canvas& screen();

// Drawing between lock and unlock becomes visible at unlock. Locks may be nested; the outermost unlock shows the frame.
void lock_screen();
void unlock_screen();
// Ends a lock without a frame of its own: what was drawn becomes visible with the next one.
void unlock_screen_unshown();
// Shows what was drawn without a lock; nothing when nothing was, or while locked.
void show_screen();

// Brackets a redraw.
class ScreenLock {
public:
    ScreenLock() { lock_screen(); }
    ~ScreenLock() { unlock_screen(); }
    ScreenLock(const ScreenLock&) = delete;
    ScreenLock& operator=(const ScreenLock&) = delete;
};

// Black picture, no lock, whole clip, no title.
void reset_screen();
