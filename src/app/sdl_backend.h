// The window of SDL: the only file that knows the library.
#pragma once

#include "app/backend.h"

#include <memory>
#include <string>

// `icon_path` names a 32-bit TGA picture for the window's icon, used when it can be read.
std::unique_ptr<Backend> make_sdl_backend(const std::string& icon_path);
