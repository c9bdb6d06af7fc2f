#include "model/bitmap_table.h"
