#include "dash/picker.h"

#include "files/file_screen.h"

PickedFile pick_picture_file() {
    const std::string result = FILEHANDLING(file_screen_mode::pictures);
    if (result.starts_with("L:")) return {PickedFile::Use::load, result.substr(2)};
    if (result.starts_with("S:")) return {PickedFile::Use::save, result.substr(2)};
    return {};
}
