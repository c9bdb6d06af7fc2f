#include "cockpit.h"

#include "formats/bitmap_file.h"
#include "formats/resource_archive.h"
#include "model/arcs.h"
#include "model/colours.h"
#include "source.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <numbers>
#include <span>

namespace {

constexpr std::string_view shared_tail[] = {"!cg0", "!eg0"}; // end both files
constexpr int opaque_from = 128;                             // alpha from which a pixel hides what lies behind
constexpr std::uint8_t see_through = 255;

int alpha_of(std::uint32_t pixel) { return static_cast<int>(pixel >> 24); }

template <typename Convert>
BitmapRecord bitmap_from(const Image& picture, const std::string& id, const SourceLine& line, Convert convert) {
    BitmapRecord bitmap;
    bitmap.name = id;
    bitmap.width = static_cast<std::uint16_t>(picture.width());
    bitmap.height = static_cast<std::uint16_t>(picture.height());
    bitmap.relative_x = static_cast<std::int16_t>(line.integer(2));
    bitmap.relative_y = static_cast<std::int16_t>(line.integer(3));
    Pixels& pixels = bitmap.pixels.edit();
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            pixels.push_back(convert(picture.pixel(x, y)));
    return bitmap;
}

// A blank in an id is written as "_".
std::string id_of(const SourceLine& line) {
    std::string id = line.field(0);
    std::ranges::replace(id, '_', ' ');
    if (id.size() != archive_id_length) line.fail("an id has four characters");
    return id;
}

void add_bitmaps(const std::filesystem::path& folder, const SourceLine& line, const NearestPaletteEntry& nearest,
                 std::vector<BitmapRecord>& bitmaps) {
    const std::string id = id_of(line);
    const ImageHandle picture = read_png(folder / line.field(1));
    bitmaps.push_back(bitmap_from(*picture, id, line, [&](std::uint32_t pixel) {
        const std::uint32_t colour = alpha_of(pixel) >= opaque_from ? pixel & 0xFFFFFF : 0;
        const std::uint8_t index = nearest(colour);
        if ((PAL[index] & 0xFFFFFF) != colour) line.fail("a pixel has a colour that is not in the palette");
        return index;
    }));
    const std::string mask(mask_of(id));
    if (mask.empty()) return;
    bitmaps.push_back(bitmap_from(*picture, mask, line, [](std::uint32_t pixel) {
        return alpha_of(pixel) >= opaque_from ? std::uint8_t{0} : see_through;
    }));
}

const BitmapRecord& find_bitmap(const Cockpit& cockpit, std::string_view id) {
    const auto found = std::ranges::find(cockpit.dashboard, id, &BitmapRecord::name);
    if (found == cockpit.dashboard.end()) throw SourceError("a cockpit has no \"" + std::string(id) + "\"");
    return *found;
}

double radians(double degrees) { return degrees * std::numbers::pi / 180; }

using GaugeLines = std::map<std::string, SourceLine>;

const SourceLine& gauge_line(const GaugeLines& lines, const std::string& key) {
    const auto found = lines.find(key);
    if (found == lines.end()) throw SourceError("gauges.txt has no \"" + key + "\"");
    return found->second;
}

Arc gauge_arc(const GaugeLines& lines, const std::string& name, const BitmapRecord& instruments) {
    const SourceLine& centre = gauge_line(lines, name + "_centre");
    const long left = instruments.relative_x, top = instruments.relative_y;
    const SourceLine& end = gauge_line(lines, name + "_end");
    const Arc arc{
        .centre = {static_cast<int>(centre.integer_within(1, left, left + instruments.width)),
                   static_cast<int>(centre.integer_within(2, top, top + instruments.height))},
        .radius = gauge_line(lines, name + "_radius").real(1),
        .start = radians(gauge_line(lines, name + "_start").real(1)),
        .end = radians(end.real(1)),
    };
    if (arc.start < arc.end) end.fail("a needle goes down from its start to its end");
    const CockpitPoint centre_in_panel = arc.centre - CockpitPoint{instruments.relative_x, instruments.relative_y};
    if (arc.radius > std::min(centre_in_panel.x, centre_in_panel.y)) centre.fail("needle tips beside the instruments");
    return arc;
}

void store_gauge(const GaugeLines& lines, const std::string& name, const Gauge& gauge,
                 const BitmapRecord& instruments) {
    const auto points = static_cast<int>(gauge_line(lines, name + "_points").integer_within(1, 1, gauge.most_points));
    set_point_count(gauge, points);
    Arc arc = gauge_arc(lines, name, instruments);
    // The last tip is lost when the sum of all steps passes the end by a rounding error; with an end a hair's breadth
    // away the errors are others.
    constexpr int attempts = 20;
    constexpr double hairs_breadth = 1e-9;
    for (int attempt = 0; attempt < attempts; ++attempt, arc.end -= hairs_breadth)
        if (lay_gauge(gauge, arc, {instruments.relative_x, instruments.relative_y}) == points + 1) return;
    throw SourceError("the " + name + " lacks a needle tip");
}

// The steering dot's way: a quarter of a circle from the top of the wheel to its right.
void store_wheel_markers(const SourceLine& wheel) {
    const Arc arc{.centre = {static_cast<int>(wheel.integer_within(1, 0, largest_arc_centre.x)),
                             static_cast<int>(wheel.integer_within(2, 0, largest_arc_centre.y))},
                  .radius = wheel.real(3)};
    if (lay_wheel(arc) != last_marker + 1) throw SourceError("the wheel lacks a marker");
}

void store_knob(long gear, const SourceLine& line, std::size_t first_field) {
    set_knob(static_cast<int>(gear), {static_cast<int>(line.integer_within(first_field, 0, canvas_width)),
                                      static_cast<int>(line.integer_within(first_field + 1, 0, canvas_height))});
}

bool has_shared_tail(const std::vector<BitmapRecord>& bitmaps) {
    return bitmaps.size() > std::size(shared_tail) &&
           std::ranges::equal(std::span(bitmaps).last(std::size(shared_tail)), shared_tail, {}, &BitmapRecord::name);
}

} // namespace

Cockpit read_cockpit(const std::filesystem::path& folder) {
    const NearestPaletteEntry nearest(PAL);
    Cockpit cockpit;
    std::vector<BitmapRecord>* bitmaps = nullptr;
    for (const SourceLine& line : read_source_lines(folder / "layout.txt")) {
        if (line.text == "[a]") {
            bitmaps = &cockpit.dashboard;
        } else if (line.text == "[b]") {
            bitmaps = &cockpit.dots_and_digits;
        } else if (bitmaps) {
            add_bitmaps(folder, line, nearest, *bitmaps);
        } else {
            line.fail("a bitmap before [a] or [b]");
        }
    }
    if (!has_shared_tail(cockpit.dashboard) || !has_shared_tail(cockpit.dots_and_digits))
        throw SourceError((folder / "layout.txt").string() + ": both parts end with !cg0 and !eg0");
    return cockpit;
}

Bytes encode_bitmaps(const std::vector<BitmapRecord>& bitmaps) {
    std::vector<ArchiveResource> resources;
    for (const BitmapRecord& bitmap : bitmaps)
        resources.push_back({bitmap.name, encode_bitmap(bitmap)});
    return encode_archive(resources);
}

Bytes encode_default_set(const Cockpit& cockpit) {
    const auto& a = cockpit.dashboard;
    const auto& b = cockpit.dots_and_digits;
    std::vector<ArchiveResource> resources;
    const auto append = [&](const BitmapRecord& bitmap) { resources.push_back({bitmap.name, encode_bitmap(bitmap)}); };
    std::for_each(b.begin() + 1, b.end() - std::ssize(shared_tail), append);
    std::for_each(a.begin() + 1, a.end(), append);
    append(b.front());
    append(a.front());
    return encode_archive(resources);
}

void store_gauges(const std::filesystem::path& folder, const Cockpit& cockpit) {
    GaugeLines lines;
    for (const SourceLine& line : read_source_lines(folder / "gauges.txt")) {
        if (line.field(0) == "gear") {
            store_knob(line.integer_within(1, 1, most_gears), line, 2);
        } else {
            lines.emplace(line.field(0), line);
        }
    }
    const BitmapRecord& instruments = find_bitmap(cockpit, "ins2");
    store_gauge(lines, "speedometer", speedometer, instruments);
    store_gauge(lines, "tachometer", tachometer, instruments);
    store_wheel_markers(gauge_line(lines, "wheel_centre"));
    store_knob(gate, gauge_line(lines, "gear_gate"), 1);
}
