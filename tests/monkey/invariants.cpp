#include "monkey/invariants.h"

#include "base/file_status.h"
#include "editor3d/views.h"
#include "files/file_list.h"
#include "formats/project_file.h"
#include "model/bitmap_table.h"
#include "model/car.h"
#include "model/items.h"
#include "model/parameters.h"
#include "params/parameter_table.h"
#include "widgets/menu_bar.h"
#include "window/window.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace {

class Rules {
public:
    void hold(bool holds, const std::string& rule) {
        if (!holds) broken_.push_back(rule);
    }
    std::vector<std::string> broken() { return std::move(broken_); }

private:
    std::vector<std::string> broken_;
};

void hold_models(Rules& rules) {
    rules.hold(CURMODEL >= 0 && CURMODEL < car_slots, "the slot is one of five");
    rules.hold(PAINTJOBS >= 1 && PAINTJOBS <= max_paint_jobs, "there are 1 to 17 paint jobs");
    rules.hold(CURPJ < PAINTJOBS, "the paint job that is shown is there");
    const auto fits = [](const Shared<SHAPEMODEL>& model) {
        return model->nverts <= shape_capacity && model->nprims <= shape_capacity;
    };
    rules.hold(std::ranges::all_of(CAR, fits) && std::ranges::all_of(CEXP, fits), "a model holds what it counts");
    rules.hold(VCAR.nverts <= VCAR.verts.size() && VCAR.ntris <= VCAR.tris.size(), "the picture's pieces fit");
}

void hold_bitmaps(Rules& rules) {
    rules.hold(BITMAPS <= max_bitmaps, "there are at most 100 bitmaps");
    rules.hold(bitmap_pixels() <= max_bitmap_pixels, "the bitmaps fit their memory");
    std::set<std::string> ids;
    for (int index = 1; index <= std::min<int>(BITMAPS, max_bitmaps); ++index) {
        const BitmapRecord& bitmap = BITMAP[index];
        const auto area = std::size_t{bitmap.width} * bitmap.height;
        rules.hold(bitmap.name.size() == 4, "an id has four characters");
        rules.hold(ids.insert(bitmap.name).second, "an id stands once: " + bitmap.name);
        rules.hold(bitmap.pixels->empty() || bitmap.pixels->size() == area, "pixels are as the size says");
    }
    for (int index = BITMAPS + 1; index <= max_bitmaps; ++index)
        rules.hold(BITMAP[index].name.empty(), "behind the last bitmap is none");
    for (int item = 1; item <= dash_items; ++item) {
        const int bound = DASHITEM[item].bitmap;
        rules.hold(bound <= BITMAPS, "an item is bound to a bitmap in use");
        rules.hold(bound == 0 || BITMAP[bound].name == DASHITEM[item].id, "an item is bound to the bitmap of its id");
    }
}

void hold_parameters(Rules& rules) {
    rules.hold(POWERGEAR >= 0 && POWERGEAR <= 4, "the mass has one of five classes");
    rules.hold(CARINFO.size() <= 1023, "the description has at most 1023 characters");
    for (int row = 1; row <= parameter_targets; ++row)
        rules.hold(!PTARGET[row].label.empty(), "the table of values stays");
}

void hold_views(Rules& rules) {
    for (int view = 1; view <= views; ++view) {
        const WINDOW3D& window = W3D[view];
        rules.hold(window.zoom >= 1 && window.zoom <= 10000, "a view's zoom is 1 to 10,000");
        rules.hold(window.left < window.right && window.top < window.bottom, "a view has its frame");
    }
    rules.hold(std::isfinite(CURYAW) && std::isfinite(CURPITCH), "the view's angles are numbers");
}

// What can be saved comes back as it is.
void hold_project(Rules& rules) {
    const ProjectFile saved = project_of_tables();
    ProjectFile loaded = saved;
    decode_project_file(encode_project_file(saved), loaded);
    rules.hold(encode_project_file(loaded) == encode_project_file(saved), "a project is read as it was written");
}

} // namespace

std::vector<std::string> broken_invariants() {
    Rules rules;
    hold_models(rules);
    hold_bitmaps(rules);
    hold_parameters(rules);
    hold_views(rules);
    hold_project(rules);
    rules.hold(screen().image().width() == screen_width && screen().image().height() == screen_height,
               "the picture keeps its size");
    rules.hold(CURMENU <= screen_number::parameters || CURMENU == screen_number::quit, "one of the screens is on");
    return rules.broken();
}
