// What the program needs from a windowing library, and all that it knows of one.
#pragma once

#include "drawing/drawing.h"
#include "window/input_event.h"

#include <span>
#include <string>
#include <vector>

class Backend {
public:
    virtual ~Backend() = default;

    // Opens the window with a picture of this size. False, with the reason in `error`, when there is no display.
    virtual bool open(int width, int height, std::string& error) = 0;
    virtual void set_title(const std::string& title) = 0;
    // Shows the picture; only these rectangles, which lie inside it and are not empty, differ from what was shown
    // before. The picture stays where it is as long as the window is open: it is what the window shows when it has been
    // resized or uncovered.
    virtual void present(const Image& picture, std::span<const Rectangle> changed) = 0;
    // Appends what has happened since the last call, in order. Never waits.
    virtual void poll(std::vector<InputEvent>& events) = 0;
    // Returns when something happens, at the latest after so many milliseconds; negative: only then. Takes no event
    // away.
    virtual void wait(int milliseconds) = 0;
    // Seconds since an arbitrary start.
    virtual double seconds() = 0;
};

// The backend in use; null until use_backend was called. Not owned.
Backend* backend();
void use_backend(Backend* in_use);
