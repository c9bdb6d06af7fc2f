#include "formats/data_files.h"

#include "base/config.h"
#include "formats/bitmap_file.h"
#include "formats/material_file.h"
#include "formats/palette_file.h"

void load_data_files(const std::string& invocation_path) {
    LOADCONFIG(invocation_path);
    LOADMATERIALS();
    LOADPALETTE();
    LOADVSH(PROGDIR + "default.vsh");
}
