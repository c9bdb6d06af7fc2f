#include "formats/palette_file.h"
