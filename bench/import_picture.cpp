// import_picture FOLDER PICTURE RESULT: the program's import of a picture as a command, with the palette of the folder,
// for measuring. The bitmap is written as a PNG.
#include "base/config.h"
#include "formats/bitmap_export.h"
#include "formats/bitmap_import.h"
#include "formats/palette_file.h"
#include "model/items.h"

#include <string>

int main(int count, char** arguments) {
    if (count != 4) return 2;
    PROGDIR = std::string(arguments[1]) + "/";
    LOADPALETTE();
    INITDASHITEMS();
    const bool done = LOADBITMAP("dash", arguments[2]).done && SAVEBITMAP("dash", arguments[3]).done;
    return done ? 0 : 1;
}
