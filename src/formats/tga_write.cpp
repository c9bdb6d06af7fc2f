#include "formats/tga.h"
