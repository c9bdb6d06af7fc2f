// Windows bitmap files: 24 bits a pixel, which everything reads; 32 bits with an alpha mask in the header when a 32-bit
// image has a pixel that is not opaque.
#pragma once

#include "image/image.h"

#include <string>

// False when the file cannot be written.
bool save_bmp(const std::string& filename, const Image& image);
