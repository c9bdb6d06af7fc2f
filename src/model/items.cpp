#include "model/items.h"

#include "base/reset.h"
#include "model/document.h"

#include "model/bitmap_table.h"

#include <array>
#include <string_view>

OneBased<DashItem, dash_items> DASHITEM;

namespace {
struct ItemKind {
    std::string_view label, id;
};
constexpr std::array<ItemKind, dash_items> item_kinds = {{
    {"Dashboard", "dash"},
    {"Dashboard top", "dast"},
    {"Roof", "roof"},
    {"Steering wheel", "whl2"},
    {"Steering (left)", "whl1"},
    {"Steering (right)", "whl3"},
    {"Instruments", "ins2"},
    {"Inst. (left)", "ins1"},
    {"Inst. (right)", "ins3"},
    {"Gear box", "gbox"},
    {"Gear knob", "gnob"},
    {"Steer dot", "dot "},
    {"Steer dot I", "dot1"},
    {"Steer dot II", "dot2"},
    {"Speed digit 0", "dig0"},
}};

// ODDITY last-duplicate-bitmap (kept): of several bitmaps of one id an item shows the last, although RBM finds the
// first.
std::uint8_t last_bitmap_of(std::string_view id) {
    std::uint8_t found = 0;
    for (std::uint8_t i = 1; i <= BITMAPS; ++i)
        if (BITMAP[i].name == id) found = i;
    return found;
}
} // namespace

void INITDASHITEMS() {
    for (int i = 1; i <= dash_items; ++i) {
        const ItemKind& kind = item_kinds[static_cast<std::size_t>(i - 1)];
        DASHITEM[i] = {std::string(kind.label), std::string(kind.id), 0};
    }
    BITMAP[0] = {};
    BITMAP[0].width = canvas_width;
    BITMAP[0].height = canvas_height;
}

void UPDATEDASHITEMS() {
    for (DashItem& item : DASHITEM)
        item.bitmap = last_bitmap_of(item.id);
}

namespace {
const ResetWithProgram registered([] { DASHITEM = {}; });
}
