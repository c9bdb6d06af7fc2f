// The window's icon in the sizes that a desktop shows.
#pragma once

#include "image/image.h"

// A square picture of 32 bits made larger or smaller: each pixel is the average of what it covers, colours weighted by
// their alpha.
ImageHandle scaled_icon(const Image& icon, int size);
