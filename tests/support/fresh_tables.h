// The car's tables, the file status and the configuration as a program has them before it reads anything.
#pragma once

#include "base/config.h"
#include "base/file_status.h"
#include "model/bitmap_table.h"
#include "model/car.h"
#include "model/colours.h"
#include "model/parameters.h"

inline void reset_car_tables() {
    reset_car();
    reset_parameters();
    reset_bitmaps();
    reset_colours();
    reset_file_status();
    reset_config();
}
