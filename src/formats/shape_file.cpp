#include "formats/shape_file.h"
