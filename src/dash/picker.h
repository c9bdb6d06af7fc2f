// The file picker of the Dash manager: the Files screen, borrowed for a moment.
#pragma once

#include <string>

// What a person chose: a name to load, a name to save under, or nothing. Then CURMENU says where to go on.
struct PickedFile {
    enum class Use { none, load, save };
    Use use = Use::none;
    std::string name{};
};
PickedFile pick_picture_file();
// A picture that was dropped on the window, to be loaded; its folder is then the current one. Nothing when the path is
// no picture's, or when the folder cannot be entered.
PickedFile pick_dropped_picture(const std::string& path);
