#include "model/car.h"

#include "base/reset.h"

#include <algorithm>

Shared<SHAPEMODEL> CARCLIP;
SHAPEMODEL WFCAR;
VISUALMODEL VCAR;

std::int8_t CURMODEL = 0;
std::uint8_t CURPJ = 0;

Shared<SHAPEMODEL>& shown_slot() { return CAR[static_cast<std::uint8_t>(CURMODEL)]; }

std::string slot_label(int slot) {
    constexpr int first_auxiliary = 3;
    constexpr std::array<const char*, first_auxiliary> names = {"Showroom", "Game", "Intro"};
    if (slot >= first_auxiliary) return "Aux " + std::to_string(slot - first_auxiliary + 1);
    return names.at(static_cast<std::size_t>(slot));
}

void settle_paint_jobs() {
    PAINTJOBS = std::clamp<std::uint8_t>(PAINTJOBS, 1, max_paint_jobs);
    if (CURPJ >= PAINTJOBS) CURPJ = 0;
}

void reset_car() {
    CAR = {};
    CEXP = {};
    CARCLIP = {};
    WFCAR = {};
    VCAR = {};
    CURMODEL = 0;
    PAINTJOBS = initial_paint_jobs;
    CURPJ = 0;
}

namespace {
const ResetWithProgram registered(reset_car);
}
