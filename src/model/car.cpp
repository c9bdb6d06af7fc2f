#include "model/car.h"

#include <algorithm>

namespace {
constexpr std::uint8_t initial_paint_jobs = 7;
}

std::array<SHAPEMODEL, car_slots> CAR;
std::array<SHAPEMODEL, explosion_models> CEXP;
SHAPEMODEL CARCLIP;
SHAPEMODEL WFCAR;
VISUALMODEL VCAR;

std::int8_t CURMODEL = 0;
std::uint8_t PAINTJOBS = initial_paint_jobs;
std::uint8_t CURPJ = 0;

void settle_paint_jobs() {
    PAINTJOBS = std::clamp<std::uint8_t>(PAINTJOBS, 1, max_paint_jobs);
    if (CURPJ >= PAINTJOBS) CURPJ = 0;
}

void reset_car() {
    for (SHAPEMODEL& model : CAR)
        model = {};
    for (SHAPEMODEL& model : CEXP)
        model = {};
    CARCLIP = {};
    WFCAR = {};
    VCAR = {};
    CURMODEL = 0;
    PAINTJOBS = initial_paint_jobs;
    CURPJ = 0;
}
