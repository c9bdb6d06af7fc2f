#include "model/paint_jobs.h"

#include "model/car.h"
#include "model/shape_parts.h"

#include <algorithm>

namespace {
constexpr std::size_t painted_slots = 3;

constexpr int shades = 4; // materials of a group
constexpr int base_group = 200;
constexpr int first_group = 48;
constexpr std::size_t groups = 11;

bool is_in_group(int material, int base) { return material >= base && material < base + shades; }

// ODDITY paint-jobs-of-three-slots (kept): the auxiliary slots and the pieces of a crash keep their materials when a
// paint job comes or goes, so that theirs no longer stand for the same paint jobs.
template <typename Change>
void for_each_painted_slot(Change change) {
    for (std::size_t slot = 0; slot < painted_slots; ++slot)
        change(CAR[slot].edit());
}
} // namespace

void copy_paint_job(SHAPEMODEL& model, std::size_t from, std::size_t to) {
    for (SHAPEPRIM& primitive : primitives_in_use(model))
        primitive.material.at(to) = primitive.material.at(from);
}

void remove_paint_job(SHAPEMODEL& model, std::size_t job, std::size_t jobs) {
    for (SHAPEPRIM& primitive : primitives_in_use(model))
        for (std::size_t next = job + 1; next < jobs; ++next)
            primitive.material.at(next - 1) = primitive.material.at(next);
}

bool add_paint_job() {
    if (PAINTJOBS >= most_added_paint_jobs) return false;
    const std::uint8_t added = PAINTJOBS;
    for_each_painted_slot([added](SHAPEMODEL& model) { copy_paint_job(model, CURPJ, added); });
    ++PAINTJOBS;
    CURPJ = added;
    return true;
}

bool remove_current_paint_job() {
    if (PAINTJOBS < 2) return false;
    if (CURPJ + 1 < PAINTJOBS)
        for_each_painted_slot([](SHAPEMODEL& model) { remove_paint_job(model, CURPJ, PAINTJOBS); });
    --PAINTJOBS;
    CURPJ = std::min<std::uint8_t>(CURPJ, PAINTJOBS - 1);
    return true;
}

// ODDITY recolours-materials-0-to-3 (kept): where no primitive has a material of a group, the group counts as that of
// the materials 0 to 3.
int recoloured_group(const SHAPEMODEL& model, std::size_t paint_job) {
    std::array<int, groups> count{};
    for (const SHAPEPRIM& primitive : body_primitives(model)) {
        const int material = primitive.material.at(paint_job);
        if (is_in_group(material, base_group)) return base_group;
        const int place = material - first_group;
        if (place >= 0 && place < shades * static_cast<int>(groups)) ++count[static_cast<std::size_t>(place / shades)];
    }
    const auto commonest = std::ranges::max_element(count);
    if (*commonest == 0) return 0;
    return first_group + shades * static_cast<int>(commonest - count.begin());
}

int recolour(SHAPEMODEL& model, std::size_t paint_job, const ColourScheme& scheme) {
    const int base = recoloured_group(model, paint_job);
    int faces = 0;
    for (SHAPEPRIM& primitive : body_primitives(model)) {
        std::uint16_t& material = primitive.material.at(paint_job);
        if (!is_in_group(material, base)) continue;
        material = scheme[static_cast<std::size_t>(material - base)];
        ++faces;
    }
    return faces;
}
