#include "dash/picker.h"

#include "base/config.h"
#include "files/dropped_path.h"
#include "files/file_list.h"
#include "files/file_screen.h"

PickedFile pick_picture_file() {
    const std::string result = FILEHANDLING(file_screen_mode::pictures);
    if (result.starts_with("L:")) return {PickedFile::Use::load, result.substr(2)};
    if (result.starts_with("S:")) return {PickedFile::Use::save, result.substr(2)};
    return {};
}

PickedFile pick_dropped_picture(const std::string& path) {
    const DroppedPath dropped = dropped_path(path);
    if (!passes_filter(dropped.name, picture_filter) || !change_directory(dropped.folder)) return {};
    return {PickedFile::Use::load, dropped.name};
}
