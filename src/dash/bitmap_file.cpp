#include "dash/bitmap_file.h"
