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
     {"x grows", "track wider", "wider", "wider, up to 50"}},
    {key::right,
     {side},
     {0, 1, 0},
     {0, q, 0},
     {0, 0, q},
     {half_length, 1, longest},
     {"y grows", "wheelbase longer by a quarter of the snap", "larger rims", "longer, up to 80"}},
    {key::left,
     {top, front},
     {-1, 0, 0},
     {-1, 0, 0},
     {-q, 0, 0},
     {half_width, -1, least},
     {"x falls", "track narrower", "narrower", "narrower, down to 1"}},
    {key::left,
     {side},
     {0, -1, 0},
     {0, -1, 0},
     {0, 0, -q},
     {half_length, -1, least},
     {"y falls", "wheelbase shorter", "smaller rims", "shorter, down to 1"}},
    {key::up,
     {top},
     {0, 1, 0},
     {0, 1, 0},
     {0, q, q},
     {half_length, 1, longest},
     {"y grows", "wheelbase longer", "larger tyres and rims", "longer, up to 80"}},
    {key::up,
     {front, side},
     {0, 0, 1},
     {0, 0, 1},
     {0, q, 0},
     {height, 1, highest},
     {"upwards", "upwards", "larger tyres", "higher, up to 40"}},
    {key::down,
     {top},
     {0, -1, 0},
     {0, -1, 0},
     {0, -q, -q},
     {half_length, -1, least},
     {"y falls", "wheelbase shorter", "smaller tyres and rims", "shorter, down to 1"}},
    {key::down,
     {front, side},
     {0, 0, -1},
     {0, 0, -1},
     {0, -q, 0},
     {height, -1, least},
     {"downwards", "downwards", "smaller tyres", "lower, down to 1"}},
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

namespace {

std::string keys_over_views(const ArrowRow& row) {
    constexpr std::array<const char*, 4> names{"", "Top", "Front", "Side"};
    std::string keys = names_of({row.key}) + " over " + names[static_cast<std::size_t>(row.views[0])];
    if (row.views[1] != 0) keys += std::string(", ") + names[static_cast<std::size_t>(row.views[1])];
    return keys;
}

const char* words_in(const ArrowRow& row, int mode) { return row.words[static_cast<std::size_t>(mode)]; }

// "Car: x grows; Wheels: ...": modes in which the same happens stand together.
std::string words_in_all_modes(const ArrowRow& row) {
    std::string words;
    for (int mode = 0; mode < move_modes; ++mode) {
        const bool goes_on = mode + 1 < move_modes && std::string_view(words_in(row, mode)) == words_in(row, mode + 1);
        words += move_mode_name(static_cast<MoveMode>(mode));
        words += goes_on ? std::string(", ") : std::string(": ") + words_in(row, mode);
        if (!goes_on && mode + 1 < move_modes) words += "; ";
    }
    return words;
}

KeyHelp turning(bool works) {
    return {"cursor keys over the 3D view, or over none", "turn the model in the 3D view", works};
}

bool acts_over(const ArrowRow& row, int view) { return std::ranges::find(row.views, view) != row.views.end(); }

} // namespace

KeyHelpTable arrow_key_help() {
    KeyHelpTable help{"The cursor keys, by view and move mode:", {}};
    for (const ArrowRow& row : rows)
        help.rows.push_back({keys_over_views(row), words_in_all_modes(row)});
    help.rows.push_back(turning(true));
    return help;
}

KeyHelpTable arrow_key_help_now(MoveMode mode, int hovered) {
    KeyHelpTable help{std::string("The cursor keys in the move mode ") + move_mode_name(mode) + ":", {}};
    const bool in_a_drawing = hovered >= top && hovered <= side;
    for (const ArrowRow& row : rows)
        help.rows.push_back(
            {keys_over_views(row), words_in(row, static_cast<int>(mode)), in_a_drawing && acts_over(row, hovered)});
    help.rows.push_back(turning(!in_a_drawing));
    return help;
}

const ArrowRow* arrow_row(std::string_view typed, int view) {
    if (view == 0) return nullptr;
    const ArrowRow* const row =
        std::ranges::find_if(rows, [&](const ArrowRow& at) { return typed == at.key && acts_over(at, view); });
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
