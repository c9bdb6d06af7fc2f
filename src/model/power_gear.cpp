#include "model/power_gear.h"

#include "model/document.h"
#include "model/parameters.h"

#include <cmath>

int powergear_class(int mass) {
    if (mass == 0) return 0;
    const double quotient = 65536.0 / mass;
    const double fraction = quotient - std::floor(quotient);
    if (fraction == 0) return 4;
    // ODDITY powergear-class-order (kept): along the fraction class 3 comes before class 2.
    if (fraction <= 1.0 / 6) return 0;
    if (fraction <= 1.0 / 2) return 1;
    if (fraction <= 5.0 / 6) return 3;
    return 2;
}

namespace {

constexpr int heaviest = 65535;

// The nearest mass of the class at or above this one; the heaviest of all when there is none.
int heavier_of_class(int mass, int wanted) {
    while (powergear_class(mass) != wanted && mass < heaviest)
        ++mass;
    return mass;
}

// The nearest mass of the class at or below this one; -1 when there is none.
int lighter_of_class(int mass, int wanted) {
    while (mass >= 0 && powergear_class(mass) != wanted)
        --mass;
    return mass;
}

int nearest_of_class(int mass, int wanted) {
    const int above = heavier_of_class(mass, wanted);
    const int below = lighter_of_class(mass, wanted);
    return below < 0 || above - mass <= mass - below ? above : below;
}

} // namespace

void UPDATEPG(bool apply) {
    const int mass = par_word(par_offset::mass);
    if (apply)
        set_par_word(par_offset::mass, static_cast<std::uint16_t>(nearest_of_class(mass, POWERGEAR)));
    else
        POWERGEAR = powergear_class(mass);
}
