// The bitmaps: selecting, placing, removing them, and their exchange with picture files.
#include "dash/modes.h"
#include "dash/panel.h"
#include "dash/picker.h"

#include "base/code_page.h"
#include "base/reset.h"
#include "formats/bitmap_export.h"
#include "formats/bitmap_import.h"
#include "model/items.h"
#include "model/placement.h"
#include "widgets/strip.h"
#include "widgets/widgets.h"

namespace {

constexpr std::uint32_t black = 0xFF000000, outline = 0xFFFAFA00;
constexpr std::uint32_t bound_item = 0xFF00FA00, unbound_item = 0xFFC83200, selection_bar = 0xFF646478;

// Of the pictures that are imported in this run.
Dither dither = Dither::none;

// Index in BITMAP, 0 when the item has none.
int selected_bitmap(const DashScreen& state) { return DASHITEM[state.item].bitmap; }

// --- drawing -------------------------------------------------------------------------------------------------------

void outline_bitmap(const CockpitView& view, const BitmapRecord& bitmap) {
    const Point at = view.at({bitmap.absolute_x, bitmap.absolute_y});
    draw_box(screen(), at.x, at.y, at.x + view.zoom * bitmap.width - 1, at.y + view.zoom * bitmap.height - 1, outline);
    draw_text(screen(), at.x + 1, at.y + 1, bitmap.name, black);
    draw_text(screen(), at.x, at.y, bitmap.name, outline);
}

void draw_view(const DashScreen& state) {
    const CockpitView view = state.view();
    fill_box(screen(), view.area.x1, view.area.y1, view.area.x2, view.area.y2, black);
    draw_body(view);
    draw_bitmap(view, "whl2");
    const int index = selected_bitmap(state);
    if (index == 0) return;
    draw_bitmap(view, index);
    outline_bitmap(view, BITMAP[index]);
}

void draw_item_list(const DashScreen& state) {
    DRAWSECTION(740, 90, 917, 355, "Images", false);
    for (int item = 1; item <= dash_items; ++item) {
        const int y = 16 * item + 89;
        if (item == state.item) fill_box(screen(), 750, y, 750 + 160 - 1, y + 16 - 1, selection_bar);
        draw_text(screen(), 760, y, DASHITEM[item].label, DASHITEM[item].bitmap ? bound_item : unbound_item);
    }
}

std::string size_text(const BitmapRecord& bitmap) {
    return std::to_string(bitmap.width) + "x" + std::to_string(bitmap.height);
}

std::string name_text(const BitmapRecord& bitmap) {
    return bitmap.has_mask ? bitmap.name + "/" + bitmap.mask_name : bitmap.name;
}

void draw_information(const DashScreen& state) {
    constexpr PanelColumns columns{760, 824};
    const int index = selected_bitmap(state);
    const BitmapRecord& bitmap = BITMAP[index];
    DRAWSECTION(740, 370, 917, 502, "Image info", false);
    draw_row(columns, {390, "Coors", index ? point_text({bitmap.absolute_x, bitmap.absolute_y}) : ""});
    draw_row(columns, {406, "Dims", index ? size_text(bitmap) : ""});
    draw_row(columns, {422, "Param", index ? name_text(bitmap) : ""});
}

void draw_panel(const DashScreen& state) {
    draw_item_list(state);
    draw_information(state);
}

// --- mouse ---------------------------------------------------------------------------------------------------------

bool covers(const BitmapRecord& bitmap, CockpitPoint place) {
    const int across = place.x - bitmap.absolute_x, down = place.y - bitmap.absolute_y;
    return across >= 0 && down >= 0 && across < bitmap.width && down < bitmap.height;
}

// The first item that has a bitmap there, 0 when none has.
int item_at(CockpitPoint place) {
    for (int item = 1; item <= dash_items; ++item)
        if (const int index = DASHITEM[item].bitmap; index && covers(BITMAP[index], place)) return item;
    return 0;
}

void take(DashScreen& state, CockpitPoint place) {
    const int item = item_at(place);
    state.drag.reset();
    if (item == 0) return;
    const int index = DASHITEM[item].bitmap;
    state.item = item;
    const BitmapRecord& bitmap = BITMAP[index];
    state.drag = Drag{index, bitmap.name, place - CockpitPoint{bitmap.absolute_x, bitmap.absolute_y}};
    state.redraw = true;
}

// Removing and importing with the button held move bitmaps in the table.
bool is_gone(const Drag& drag) { return drag.bitmap > BITMAPS || BITMAP[drag.bitmap].name != drag.name; }

void on_mouse(DashScreen& state, CockpitPoint place) {
    if (state.input.left_pressed()) return take(state, place);
    if (state.drag && is_gone(*state.drag)) state.drag.reset();
    if (!state.drag) return;
    const CockpitPoint corner = place - state.drag->grabbed;
    MOVEDASHIMAGETO(state.drag->bitmap, corner.x, corner.y);
    state.redraw = true;
}

// --- keys ----------------------------------------------------------------------------------------------------------

template <int step>
void step_item(DashScreen& state) {
    state.item = (state.item - 1 + step + dash_items) % dash_items + 1;
    state.redraw = true;
}

bool has_bitmap(const DashScreen& state) { return selected_bitmap(state) != 0; }

template <int across, int down>
void move_bitmap(DashScreen& state) {
    const int index = selected_bitmap(state);
    MOVEDASHIMAGETO(index, BITMAP[index].absolute_x + across, BITMAP[index].absolute_y + down);
    state.redraw = true;
}

void remove_bitmap(DashScreen& state) {
    REMOVEBITMAP(selected_bitmap(state));
    state.redraw = true;
}

void import_picture(DashScreen& state, const std::string& name) {
    say(code_page_from_utf8(LOADBITMAP(DASHITEM[state.item].id, name, dither).message));
    state.redraw = true;
}

bool take_drop(DashScreen& state) {
    const PickedFile file = pick_dropped_picture(state.input.dropped);
    if (file.use == PickedFile::Use::none) return false;
    import_picture(state, file.name);
    return true;
}

void next_dither(DashScreen&) {
    dither = static_cast<Dither>((static_cast<int>(dither) + 1) % dithers);
    say(std::string("Dithering of imported pictures: ") + dither_name(dither));
}

enum class Dialogue { load_or_save, save_only };

// However the picker ends, the screen that CURMENU names goes on.
template <Dialogue dialogue>
void exchange_bitmap(DashScreen& state) {
    const PickedFile file = pick_picture_file();
    if (CURMENU != screen_number::dash_manager) state.leave = true;
    const std::string id = DASHITEM[state.item].id;
    if (file.use == PickedFile::Use::save) say(code_page_from_utf8(SAVEBITMAP(id, file.name).message));
    if (file.use == PickedFile::Use::load && dialogue == Dialogue::save_only)
        say("Ctrl+S saves a bitmap: nothing was loaded");
    else if (file.use == PickedFile::Use::load)
        import_picture(state, file.name);
    state.redraw = true;
}

void choose_digit(DashScreen& state) {
    DashItem& digits = DASHITEM[dash_items];
    digits.id = "dig" + state.input.key;
    digits.label.back() = state.input.key[0];
    UPDATEDASHITEMS();
    state.redraw = true;
}

constexpr KeyBinding<DashScreen> keys[] = {
    {{}, "selects the bitmap there, the first of the list", nullptr, "left button on the cockpit"},
    {{}, "moves the bitmap that was pressed on", nullptr, "dragging with the left button"},
    {{key::page_down}, "next item of the list, the first again after the last", step_item<1>},
    {{key::page_up}, "previous item of the list", step_item<-1>},
    {{key::left}, "moves the bitmap one pixel left", move_bitmap<-1, 0>, nullptr, has_bitmap},
    {{key::right}, "moves the bitmap one pixel right", move_bitmap<1, 0>, nullptr, has_bitmap},
    {{key::up}, "moves the bitmap one pixel up", move_bitmap<0, -1>, nullptr, has_bitmap},
    {{key::down}, "moves the bitmap one pixel down", move_bitmap<0, 1>, nullptr, has_bitmap},
    {{key::enter},
     "chooses a picture file to load the bitmap from, or to save it to",
     exchange_bitmap<Dialogue::load_or_save>},
    {{key::ctrl<'S'>}, "chooses a picture file to save the bitmap to", exchange_bitmap<Dialogue::save_only>},
    {{key::delete_}, "removes the bitmap and its mask", remove_bitmap, nullptr, has_bitmap},
    {{"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"},
     "the last item shows that speed digit",
     choose_digit,
     "0 to 9"},
    {{"t", "T"}, "dithering of imported pictures: none, ordered, Floyd-Steinberg", next_dither, "T"},
};

const ResetWithProgram registered([] { dither = Dither::none; });

} // namespace

const DashMode images_mode{.key_heading = "Among the images:",
                           .view_title = "Dash view",
                           .draw_view = draw_view,
                           .draw_panel = draw_panel,
                           .on_mouse = on_mouse,
                           .keys = keys,
                           .on_drop = take_drop};
