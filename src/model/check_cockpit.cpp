#include "model/bitmap_table.h"
#include "model/check_parts.h"
#include "model/gauges.h"
#include "model/parameters.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<std::string_view, 23> needed_bitmaps = {
    "dash", "roof", "whl1", "whl2", "whl3", "ins1", "ins2", "ins3", "gbox", "gnob", "dot ", "dot1",
    "dot2", "dig0", "dig1", "dig2", "dig3", "dig4", "dig5", "dig6", "dig7", "dig8", "dig9"};

const BitmapRecord* bitmap_in(const CarDocument& car, std::string_view id) {
    for (int i = 1; i <= car.bitmap_count; ++i)
        if (car.bitmaps[i].name == id) return &car.bitmaps[i];
    return nullptr;
}

bool has_area(const BitmapRecord& bitmap) { return bitmap.width > 0 && bitmap.height > 0 && has_pixel_buffer(bitmap); }

bool is_on_canvas(const BitmapRecord& bitmap) {
    return bitmap.absolute_x >= 0 && bitmap.absolute_y >= 0 && bitmap.absolute_x + bitmap.width <= canvas_width &&
           bitmap.absolute_y + bitmap.height <= canvas_height;
}

class CockpitCheck {
public:
    CockpitCheck(const CarDocument& car, Findings& findings) : car_(car), findings_(findings) {}

    void needed() {
        for (const std::string_view id : needed_bitmaps)
            if (!bitmap_in(car_, id))
                add(Severity::serious, id, "The cockpit needs it, and it is missing", load_remedy);
    }
    void bitmaps() {
        for (int i = 1; i <= car_.bitmap_count; ++i) {
            const BitmapRecord& bitmap = car_.bitmaps[i];
            if (is_mask_id(bitmap.name)) continue; // told with its owner
            if (!has_area(bitmap))
                add(Severity::serious, bitmap.name, "It has no area", load_remedy);
            else if (!is_on_canvas(bitmap))
                add(Severity::doubtful, bitmap.name, "It reaches outside the canvas of 320 x 200", "move it back");
            check_mask(bitmap);
        }
    }
    void gauge(const Gauge& gauge, CheckSpot spot, const std::string& where) {
        const BitmapRecord* const panel = bitmap_in(car_, "ins2");
        if (!panel) return;
        const int last = std::min<int>(word_of(car_.par, gauge.offset + 4), gauge.most_points);
        first_outside(last, spot, where, "needle tip", *panel, [&](int tip) {
            return CockpitPoint{byte_of(gauge.offset + 6 + 2 * tip), byte_of(gauge.offset + 7 + 2 * tip)};
        });
    }
    void knobs() {
        const BitmapRecord* const box = bitmap_in(car_, "gbox");
        if (!box) return;
        const int last = std::min<int>(byte_of(par_offset::gear_count), most_gears);
        first_outside(last, CheckSpot::knob, "Gear box", "knob position", *box, [&](int gear) {
            return CockpitPoint{static_cast<std::int16_t>(word_of(car_.par, par_offset::knobs + 4 * gear)),
                                static_cast<std::int16_t>(word_of(car_.par, par_offset::knobs + 2 + 4 * gear))};
        });
    }

private:
    static constexpr const char* load_remedy = "Enter loads a picture";

    int byte_of(int offset) const { return std::to_integer<int>(car_.par.at(static_cast<std::size_t>(offset))); }

    void check_mask(const BitmapRecord& owner) {
        const std::string_view id = mask_of(owner.name);
        if (id.empty()) return;
        const BitmapRecord* const mask = bitmap_in(car_, id);
        const std::string name = "Its mask " + std::string(id);
        if (!mask)
            add(Severity::doubtful, owner.name, name + " is missing", "load the picture anew: Enter");
        else if (!has_pixel_buffer(*mask) || mask->width != owner.width || mask->height != owner.height)
            add(Severity::serious, owner.name, name + " has another size", "load the picture anew: Enter");
    }
    // One finding for all points outside; it leads to the first.
    void first_outside(int last, CheckSpot spot, const std::string& where, const std::string& what,
                       const BitmapRecord& within, auto&& point) {
        std::size_t outside = 0;
        int first = -1;
        for (int i = 0; i <= last; ++i) {
            const CockpitPoint at = point(i);
            if (at.x >= 0 && at.y >= 0 && at.x < within.width && at.y < within.height) continue;
            if (outside++ == 0) first = i;
        }
        if (outside == 0) return;
        findings_.push_back({Severity::doubtful,
                             where,
                             counted(outside, what, what + "s") + " outside the bitmap " + within.name,
                             "move back what is selected",
                             {spot, first}});
    }
    void add(Severity severity, std::string_view id, std::string what, const char* remedy) {
        findings_.push_back(
            {severity, "Bitmap " + std::string(id), std::move(what), remedy, {CheckSpot::bitmap, 0, std::string(id)}});
    }

    const CarDocument& car_;
    Findings& findings_;
};

} // namespace

void check_cockpit(const CarDocument& car, Findings& findings) {
    CockpitCheck check(car, findings);
    check.needed();
    check.bitmaps();
    check.gauge(speedometer, CheckSpot::speedometer_tip, "Speedometer");
    check.gauge(tachometer, CheckSpot::tachometer_tip, "Tachometer");
    check.knobs();
}
