// The fifteen kinds of dashboard item, each shown by at most one bitmap whose name is the item's id.
#pragma once

#include "base/table.h"

#include <cstdint>
#include <string>

struct DashItem {
    std::string label;
    std::string id;          // four characters
    std::uint8_t bitmap = 0; // index in BITMAP, 0 when none is bound
};

constexpr int dash_items = 15;
extern OneBased<DashItem, dash_items> DASHITEM;

// Fills DASHITEM and sets BITMAP(0) to the 320 x 200 canvas.
void INITDASHITEMS();
// Binds every item to the last bitmap of exactly its id.
void UPDATEDASHITEMS();
