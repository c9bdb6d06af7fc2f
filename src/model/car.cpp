#include "model/car.h"

#include "base/reset.h"

#include <algorithm>

Shared<SHAPEMODEL> CARCLIP;
SHAPEMODEL WFCAR;
VISUALMODEL VCAR;

std::int8_t CURMODEL = 0;
std::uint8_t CURPJ = 0;

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
