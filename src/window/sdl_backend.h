// The window of SDL, which only this file's source and sdl_events know.
//
// The picture goes into the window's own surface, scaled as scaling.h says, and only where it changed; the surface is
// drawn anew from the last picture whenever the window was resized or uncovered.
#pragma once

#include "window/backend.h"

#include <memory>
#include <string>

// `icon_path` names a 32-bit TGA picture for the window's icon, used when it can be read.
std::unique_ptr<Backend> make_sdl_backend(const std::string& icon_path);
