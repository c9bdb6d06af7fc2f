// A redraw of the cockpit of each sample car at both zooms, against copying the view's area once.
#include "alternate.h"
#include "base/config.h"
#include "dash/cockpit.h"
#include "drawing/drawing.h"
#include "formats/bitmap_file.h"
#include "formats/palette_file.h"
#include "model/bitmap_table.h"
#include "model/items.h"
#include "window/window.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <initializer_list>
#include <string>

namespace {

constexpr int rounds = 51;
constexpr double most_copies = 4; // a redraw is so many copies of the whole area at most

void load(const std::string& car) {
    reset_bitmaps();
    INITDASHITEMS();
    for (const char* set : {"garage/stda", "garage/stdb"})
        LOADVSH(PROGDIR + set + car + ".vsh");
}

bool measure(const std::string& car, int zoom) {
    const CockpitView view = view_at(zoom);
    const ClipGuard clip(screen(), view.area);
    const ImageHandle area = create_image(view.area.x2 - view.area.x1 + 1, view.area.y2 - view.area.y1 + 1, 0);
    const auto times = compare(
        rounds,
        [&] {
            draw_cockpit(view, Steering::left);
            benchmark::DoNotOptimize(screen().image().bytes().data());
            screen().take_damage();
        },
        [&] {
            draw_image(screen(), *area, view.area.x1, view.area.y1, DrawMode::copy);
            benchmark::DoNotOptimize(screen().image().bytes().data());
            screen().take_damage();
        });
    const std::string what = car + " at zoom " + std::to_string(zoom);
    print_times(what.c_str(), "one copy of the area", times);
    return report_at_most(what.c_str(), 1 / times.ratio, "copies", most_copies);
}

} // namespace

int main() {
    PROGDIR = KAROSMIT_DATA_DIR;
    LOADPALETTE();
    bool kept = true;
    for (const char* car : {"vela", "brux", "tarn"}) {
        load(car);
        if (RBM("dash") == 0 || RBM("whl1") == 0) {
            std::printf("no cockpit of %s\n", car);
            return 1;
        }
        for (const int zoom : {small_zoom, large_zoom})
            kept &= measure(car, zoom);
    }
    return kept ? 0 : 1;
}
