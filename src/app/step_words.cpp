#include "app/step_words.h"

#include "base/text.h"
#include "model/parameters.h"
#include "params/parameter_table.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>
#include <vector>

namespace {

using Words = std::set<std::string>;

// What lies in PAR beside the rows of the parameter screen, from the first byte up to the last.
struct ParRange {
    int first, last;
    std::string_view words;
};
constexpr ParRange par_ranges[] = {
    {par_offset::knobs, par_offset::torque_curve - 3, "gear knobs"},
    {par_offset::torque_curve, par_offset::torque_curve + torque_points - 1, "torque curve"},
    {par_offset::collision_half_width, par_offset::collision_radius + 1, "collision size"},
    {par_offset::wheels, par_offset::steering_markers - 1, "wheel positions"},
    {par_offset::steering_markers, par_offset::speedometer - 1, "steering dots"},
    {par_offset::speedometer, par_offset::tachometer - 1, "speedometer"},
    {par_offset::tachometer, static_cast<int>(parameter_bytes) - 1, "tachometer"},
};

bool holds_byte(const PARAMINPUT& row, int offset) {
    if (row.type == target_type::byte) return row.offset == offset;
    return row.type == target_type::word && target_word_offset(row.offset) == offset / 2 * 2;
}

std::string words_of_byte(int offset) {
    for (const ParRange& range : par_ranges)
        if (offset >= range.first && offset <= range.last) return std::string(range.words);
    for (const PARAMINPUT& row : PTARGET)
        if (holds_byte(row, offset)) return lower_case(row.label);
    return "parameters";
}

Words parameter_words(const CarDocument& older, const CarDocument& newer) {
    Words words;
    for (std::size_t i = 0; i < older.par.size(); ++i)
        if (older.par[i] != newer.par[i]) words.insert(words_of_byte(static_cast<int>(i)));
    // The mass and its class go together.
    if (words.empty() && older.power_gear != newer.power_gear) words.insert("powergear");
    if (older.name != newer.name) words.insert("car name");
    if (older.sign_name != newer.sign_name) words.insert("sign name");
    if (older.information != newer.information) words.insert("description");
    return words;
}

constexpr std::array<std::string_view, car_slots> slot_names = {"Showroom", "Game", "Intro", "Aux 1", "Aux 2"};

// A model whose faces are the same may have moved, or have other colours.
std::string model_change(const SHAPEMODEL& older, const SHAPEMODEL& newer) {
    if (older.nverts != newer.nverts || older.nprims != newer.nprims) return "shape";
    const bool same_places = older.verts == newer.verts;
    const bool same_faces = older.prims == newer.prims;
    if (same_places && !same_faces) return "colours";
    return same_faces ? "places" : "shape";
}

Words model_words(const CarDocument& older, const CarDocument& newer) {
    if (older.paint_jobs < newer.paint_jobs) return {"paint job added"};
    if (older.paint_jobs > newer.paint_jobs) return {"paint job removed"};
    Words words;
    for (std::size_t slot = 0; slot < car_slots; ++slot)
        if (!(older.models[slot] == newer.models[slot]))
            words.insert(std::string(slot_names[slot]) + ": " + model_change(*older.models[slot], *newer.models[slot]));
    if (older.explosions != newer.explosions) words.insert("debris");
    return words;
}

const BitmapRecord* bitmap_of(const CarDocument& car, std::string_view id) {
    for (int i = 1; i <= car.bitmap_count; ++i)
        if (car.bitmaps[i].name == id) return &car.bitmaps[i];
    return nullptr;
}

std::string bitmap_change(const BitmapRecord* older, const BitmapRecord* newer) {
    if (!newer) return "removal";
    if (!older || !(older->pixels == newer->pixels) || older->width != newer->width) return "picture";
    return "place";
}

// Its mask follows a bitmap, and the panels follow the instruments: what they do by themselves goes unsaid.
bool follows(const BitmapRecord& bitmap) { return bitmap.is_mask != 0; }

Words bitmap_words(const CarDocument& older, const CarDocument& newer) {
    Words words, followers;
    const auto look = [&](const CarDocument& car) {
        for (int i = 1; i <= car.bitmap_count; ++i) {
            const std::string& id = car.bitmaps[i].name;
            const BitmapRecord *was = bitmap_of(older, id), *is = bitmap_of(newer, id);
            if (was && is && *was == *is) continue;
            (follows(car.bitmaps[i]) ? followers : words).insert(bitmap_change(was, is) + " of " + id);
        }
    };
    look(older);
    look(newer);
    if (words.contains("place of ins2")) return {"place of ins2"};
    return words.empty() ? followers : words;
}

// One thing by its name, several of a kind by the kind's.
std::string joined(const Words& words, std::string_view kind) {
    return words.size() == 1 ? *words.begin() : std::string(kind);
}

} // namespace

std::string step_words(const CarDocument& older, const CarDocument& newer) {
    if (older.origin.load != newer.origin.load) return "load of " + newer.origin.loaded;
    std::vector<std::string> parts;
    const auto add = [&](const Words& words, std::string_view kind) {
        if (!words.empty()) parts.push_back(joined(words, kind));
    };
    add(parameter_words(older, newer), "parameters");
    add(model_words(older, newer), "models");
    add(bitmap_words(older, newer), "bitmaps");
    std::string all;
    for (const std::string& part : parts)
        all += (all.empty() ? "" : ", ") + part;
    return all.empty() ? "bitmaps" : all;
}
