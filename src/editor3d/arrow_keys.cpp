#include "editor3d/arrow_keys.h"

#include "model/generators.h"
#include "model/parameters.h"
#include "window/key_strings.h"

#include <algorithm>

const char* move_mode_name(MoveMode mode) {
    constexpr std::array names{"Car", "Wheels", "Resize W.", "Collision"};
    return names[static_cast<std::size_t>(mode)];
}

namespace {

constexpr int top = 1, front = 2, side = 3;
constexpr int half_width = par_offset::collision_half_width, height = par_offset::collision_height,
              half_length = par_offset::collision_half_length;
constexpr int widest = 50, highest = 40, longest = 80, least = 1;
constexpr double q = 0.25; // wheels change their size by a quarter of the snap

// ODDITY wheel-right-quarter (kept): in the side view Right moves the wheels by a quarter of the snap, Left by all of
// it. Habits and recorded steps rely on it.
constexpr ArrowRow rows[] = {
    // key, views; car, wheels, wheels' width and radii; collision box
    {key::right,
     {top, front},
     {1, 0, 0},
     {1, 0, 0},
     {q, 0, 0},
     {half_width, 1, widest},
     "Car: x grows; Wheels: track wider; Resize W.: wider; Collision: wider, up to 50"},
    {key::right,
     {side},
     {0, 1, 0},
     {0, q, 0},
     {0, 0, q},
     {half_length, 1, longest},
     "Car: y grows; Wheels: wheelbase longer by a quarter of the snap; Resize W.: larger rims; "
     "Collision: longer, up to 80"},
    {key::left,
     {top, front},
     {-1, 0, 0},
     {-1, 0, 0},
     {-q, 0, 0},
     {half_width, -1, least},
     "Car: x falls; Wheels: track narrower; Resize W.: narrower; Collision: narrower, down to 1"},
    {key::left,
     {side},
     {0, -1, 0},
     {0, -1, 0},
     {0, 0, -q},
     {half_length, -1, least},
     "Car: y falls; Wheels: wheelbase shorter; Resize W.: smaller rims; Collision: shorter, down to 1"},
    {key::up,
     {top},
     {0, 1, 0},
     {0, 1, 0},
     {0, q, q},
     {half_length, 1, longest},
     "Car: y grows; Wheels: wheelbase longer; Resize W.: larger tyres and rims; Collision: longer, up to 80"},
    {key::up,
     {front, side},
     {0, 0, 1},
     {0, 0, 1},
     {0, q, 0},
     {height, 1, highest},
     "Car, Wheels: upwards; Resize W.: larger tyres; Collision: higher, up to 40"},
    {key::down,
     {top},
     {0, -1, 0},
     {0, -1, 0},
     {0, -q, -q},
     {half_length, -1, least},
     "Car: y falls; Wheels: wheelbase shorter; Resize W.: smaller tyres and rims; Collision: shorter, down to 1"},
    {key::down,
     {front, side},
     {0, 0, -1},
     {0, 0, -1},
     {0, -q, 0},
     {height, -1, least},
     "Car, Wheels: downwards; Resize W.: smaller tyres; Collision: lower, down to 1"},
};

void step_word(const CollisionStep& step) {
    const int value = par_word(step.word);
    const bool room = step.step > 0 ? value < step.bound : value > step.bound;
    if (room) set_par_word(step.word, static_cast<std::uint16_t>(value + step.step));
}

void apply(void (*change)(double, double, double), const SnapVector& parts, double snap) {
    change(parts[0] * snap, parts[1] * snap, parts[2] * snap);
}

} // namespace

std::span<const ArrowRow> arrow_rows() { return rows; }

KeyHelpTable arrow_key_help() {
    constexpr std::array<const char*, 4> names{"", "Top", "Front", "Side"};
    KeyHelpTable help{"The cursor keys, by view and move mode:", {}};
    for (const ArrowRow& row : rows) {
        std::string keys = names_of({row.key}) + " over " + names[static_cast<std::size_t>(row.views[0])];
        if (row.views[1] != 0) keys += std::string(", ") + names[static_cast<std::size_t>(row.views[1])];
        help.rows.push_back({keys, row.words});
    }
    help.rows.push_back({"cursor keys over the 3D view, or over none", "turn the model in the 3D view"});
    return help;
}

const ArrowRow* arrow_row(std::string_view typed, int view) {
    if (view == 0) return nullptr;
    const ArrowRow* const row = std::ranges::find_if(rows, [&](const ArrowRow& at) {
        return typed == at.key && std::ranges::find(at.views, view) != at.views.end();
    });
    return row == std::end(rows) ? nullptr : row;
}

void move_by(const ArrowRow& row, MoveMode mode, double snap) {
    switch (mode) {
    case MoveMode::car: return apply(MOVECAR, row.car, snap);
    case MoveMode::wheels: return apply(MOVEWHEELS, row.wheels, snap);
    case MoveMode::resize_wheels: return apply(RESIZEWHEELS, row.wheel_size, snap);
    case MoveMode::collision: return step_word(row.collision);
    }
}
