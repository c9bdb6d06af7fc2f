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
