#include "model/check_parts.h"
#include "model/dimensions.h"
#include "model/parameters.h"
#include "model/shape_parts.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr int first_ratio = 16; // u16 a gear, in PAR
constexpr std::size_t game_slot = 1;

class ParameterCheck {
public:
    ParameterCheck(const CarDocument& car, Findings& findings) : car_(car), findings_(findings) {}

    void gears() {
        const int gears = std::to_integer<int>(car_.par[par_offset::gear_count]);
        if (gears == 0 || gears > most_gears)
            return at_row(Severity::serious, "Gears", std::to_string(gears) + " gears; the game knows 1 to 6",
                          "type another number", par_offset::gear_count);
        for (int gear = 1; gear <= gears; ++gear) {
            const std::string where = "Gear " + std::to_string(gear);
            if (ratio(gear) == 0)
                return at_row(Severity::serious, where, "It has no ratio", "type one", ratio_offset(gear));
            if (gear > 1 && ratio(gear) >= ratio(gear - 1))
                return at_row(Severity::doubtful, where, "Its ratio is not below that of the gear before",
                              "ratios fall from gear to gear", ratio_offset(gear));
        }
    }
    void engine() {
        const std::array<int, 4> speeds{word(par_offset::idle_rpm), word(par_offset::downshift_rpm),
                                        word(par_offset::upshift_rpm), word(par_offset::maximum_rpm)};
        if (std::ranges::adjacent_find(speeds, std::ranges::greater_equal()) != speeds.end())
            add(Severity::doubtful, "Engine", "Idle, downshift, upshift and maximum speed do not rise",
                "drag the marks below the torque curve", {CheckSpot::engine_speed});
        const auto curve = std::span(car_.par).subspan(par_offset::torque_curve, torque_points);
        if (std::ranges::count(curve, std::byte{0}) == torque_points)
            add(Severity::serious, "Engine", "No torque at any speed", "paint the torque curve",
                {CheckSpot::torque_curve});
    }
    void collision() {
        const CollisionBox box = collision_box(*car_.models[game_slot]);
        collision_word(par_offset::collision_half_width, "width", box.half_width);
        collision_word(par_offset::collision_height, "height", box.height);
        collision_word(par_offset::collision_half_length, "length", box.half_length);
        collision_word(par_offset::collision_radius, "radius", 0); // a measure of its own, see dimensions.cpp
    }
    // The model's grid in the file is coarser than the parameters': half a step of it is no difference.
    void wheels() {
        constexpr int half_a_step = static_cast<int>(CARSCALE[1] / CARSCALE[3] / 2);
        ParameterBlock expected = car_.par;
        if (!store_wheel_positions(*car_.models[game_slot], expected)) return;
        for (int wheel = 0; wheel < static_cast<int>(car_layout::wheels); ++wheel)
            for (const int offset : {par_offset::wheels + 6 * wheel, par_offset::wheels + 6 * wheel + 4}) {
                const int difference = signed_word(expected, offset) - signed_word(car_.par, offset);
                if (std::abs(difference) > half_a_step + 1)
                    return add(Severity::doubtful, "Wheels", "They roll elsewhere than the Game model has them",
                               "Ctrl+B takes their positions over", {CheckSpot::model, game_slot});
            }
    }

private:
    static int ratio_offset(int gear) { return first_ratio + 2 * (gear - 1); }
    int ratio(int gear) const { return word(ratio_offset(gear)); }
    int word(int offset) const { return word_of(car_.par, offset); }
    static int signed_word(const ParameterBlock& par, int offset) {
        return static_cast<std::int16_t>(word_of(par, offset));
    }

    void collision_word(int offset, const std::string& name, double body) {
        if (word(offset) == 0)
            add(Severity::serious, "Collision box", "It has no " + name, "Ctrl+B takes it from the Game model",
                {CheckSpot::model, game_slot});
        else if (word(offset) < body - 0.5)
            add(Severity::doubtful, "Collision box", "Its " + name + " is smaller than the Game model's",
                "Ctrl+B takes it from the Game model", {CheckSpot::model, game_slot});
    }
    void at_row(Severity severity, std::string where, std::string what, const char* remedy, int offset) {
        add(severity, std::move(where), std::move(what), remedy, {CheckSpot::parameter, offset});
    }
    void add(Severity severity, std::string where, std::string what, const char* remedy, CheckPlace place) {
        findings_.push_back({severity, std::move(where), std::move(what), remedy, std::move(place)});
    }

    const CarDocument& car_;
    Findings& findings_;
};

constexpr std::size_t name_length = 21, sign_name_length = 4; // that the screens show
constexpr std::size_t description_lines = 9, description_columns = 23;

// Each is ended by a "]"; a rest without one is the last.
std::vector<std::string_view> lines_of(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = text.find(']');
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

} // namespace

void check_parameters(const CarDocument& car, Findings& findings) {
    ParameterCheck check(car, findings);
    check.gears();
    check.engine();
    check.collision();
    check.wheels();
}

void check_texts(const CarDocument& car, Findings& findings) {
    const auto add = [&](const char* where, std::string what, const char* remedy, CheckSpot spot) {
        findings.push_back({Severity::doubtful, where, std::move(what), remedy, {spot}});
    };
    const auto too_long = [](std::size_t length, std::size_t most) {
        return std::to_string(length) + " characters, the screens show " + std::to_string(most);
    };
    if (car.name.size() > name_length)
        add("Car name", too_long(car.name.size(), name_length), "shorten it", CheckSpot::name);
    if (car.sign_name.size() > sign_name_length)
        add("Sign name", too_long(car.sign_name.size(), sign_name_length), "shorten it", CheckSpot::sign_name);
    const auto lines = lines_of(car.information);
    if (lines.size() > description_lines)
        add("Description", std::to_string(lines.size()) + " lines, nine are shown", "take lines away",
            CheckSpot::description);
    const auto wide = std::ranges::count_if(lines, [](auto line) { return line.size() > description_columns; });
    if (wide > 0)
        add("Description", counted(static_cast<std::size_t>(wide), "line of", "lines of") + " more than 23 characters",
            "break them: a line ends at \"]\"", CheckSpot::description);
}
