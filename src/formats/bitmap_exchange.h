// What an import or export of a bitmap comes to, as a person is told.
#pragma once

#include <string>

struct BitmapExchange {
    bool done = false;
    std::string message{};
};
