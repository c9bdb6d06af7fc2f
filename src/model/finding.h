// What a check of a car found: where, what, what to do, and the place where it is mended.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

enum class Severity : std::uint8_t {
    serious,  // the files cannot hold it, or the game cannot drive with it
    doubtful, // it is taken, and will look or drive wrong
    forgotten // it works, and looks as if somebody meant to go on
};

// Where a person mends it.
enum class CheckSpot : std::uint8_t {
    model,           // number: the slot
    bitmap,          // id: the bitmap that a person selects
    speedometer_tip, // number: the tip
    tachometer_tip,
    knob,         // number: the gear, 0 for the gate
    parameter,    // number: its offset in PAR
    engine_speed, // the marks below the torque curve
    torque_curve,
    name,
    sign_name,
    description
};
struct CheckPlace {
    CheckSpot spot = CheckSpot::model;
    int number = 0;
    std::string id{};

    bool operator==(const CheckPlace&) const = default;
};

struct Finding {
    Severity severity = Severity::serious;
    std::string where, what, remedy; // of one line each; words for a person
    CheckPlace place;
};

using Findings = std::vector<Finding>;

// "1 vertex", "3 vertices".
std::string counted(std::size_t count, std::string_view one, std::string_view several);
