#include "params/parameter_table.h"

#include "model/parameters.h"

#include <cmath>
#include <string_view>

OneBased<PARAMINPUT, 100> PTARGET;
std::array<std::string, 5> TEXTOPTION;

namespace {

// Where the rows of a section stand; they follow each other line by line.
struct Section {
    int label_x, value_x, width;
};
constexpr Section general{25, 121, 30}, grip{335, 431, 20}, gears{545, 641, 20}, mysterious{755, 851, 20},
    rpm{755, 875, 25};
constexpr int first_line_y = 70;
constexpr int line_height = 16;

struct Row {
    std::string_view label;
    const Section& section;
    int line;
    std::uint8_t type;
    int offset;
    int maximum;
    int new_car; // the value of a new car
};

constexpr auto word = target_type::word;
constexpr auto byte = target_type::byte;

// In the order of PTARGET, from row 1.
constexpr std::array<Row, parameter_targets> rows{{
    {"Mass", general, 2, word, par_offset::mass, 65535, 20},
    {"Powergear", general, 3, target_type::option, -1, 4, 0},
    {"Brakes", general, 4, word, 4, 65535, 300},
    {"Air drag", general, 5, word, 56, 65535, 30},
    {"C. height", general, 6, word, 208, 65535, 18},
    {"Intrinsic", grip, 0, word, 164, 65535, 400},
    {"On asphalt", grip, 1, word, 182, 65535, 256},
    {"On dirt", grip, 2, word, 184, 65535, 192},
    {"On ice", grip, 3, word, 186, 65535, 64},
    {"On grass", grip, 4, word, 188, 65535, 128},
    {"Airborne", grip, 5, word, 180, 65535, 0},
    {"Gears", gears, 0, byte, par_offset::gear_count, 6, 5},
    {"1st ratio", gears, 1, word, 16, 65535, 30000},
    {"2nd ratio", gears, 2, word, 18, 65535, 20000},
    // ODDITY third-ratio-label (kept): the label is the gear's number and "th" from the third gear on, "3th" included.
    {"3th ratio", gears, 3, word, 20, 65535, 15000},
    {"4th ratio", gears, 4, word, 22, 65535, 10000},
    {"5th ratio", gears, 5, word, 24, 65535, 5000},
    {"6th ratio", gears, 6, word, 26, 65535, 0},
    {"Purple", mysterious, 0, byte, 1, 255, 0},
    {"Yellow", mysterious, 1, word, 14, 65535, 0},
    {"Blue", mysterious, 2, word, 162, 65535, 0},
    {"Red #1", mysterious, 3, word, 166, 65535, 238},
    {"Red #2", mysterious, 4, word, 168, 65535, 184},
    {"Red #3", mysterious, 5, word, 170, 65535, 0},
    {"Red #4", mysterious, 6, word, 172, 65535, 32},
    {"Red #5", mysterious, 7, word, 174, 65535, 16},
    {"Red #6", mysterious, 8, word, 176, 65535, 12},
    {"Red #7", mysterious, 9, word, 178, 65535, 8},
    {"Orange #1", mysterious, 10, word, 190, 65535, 0},
    {"Orange #2", mysterious, 11, word, 192, 65535, 32},
    {"Orange #3", mysterious, 12, word, 194, 65535, 192},
    {"Orange #4", mysterious, 13, word, 196, 65535, 128},
    {"Orange #5", mysterious, 14, word, 198, 65535, 64},
    {"Car name", general, 0, target_type::car_name, 208, 21, 0},
    {"Sign name", general, 1, target_type::sign_name, 208, 4, 0},
    {"Idle RPM", rpm, 0, word, par_offset::idle_rpm, 65535, 1000},
    {"Downshift RPM", rpm, 1, word, par_offset::downshift_rpm, 65535, 2000},
    {"Upshift RPM", rpm, 2, word, par_offset::upshift_rpm, 65535, 9000},
    {"Maximum RPM", rpm, 3, word, par_offset::maximum_rpm, 65535, 10000},
}};

PARAMINPUT target_of(const Row& row) {
    PARAMINPUT target;
    target.label_x = static_cast<std::int16_t>(row.section.label_x);
    target.label_y = static_cast<std::int16_t>(first_line_y + line_height * row.line);
    target.label = row.label;
    target.value_x = static_cast<std::int16_t>(row.section.value_x);
    target.value_y = target.label_y;
    target.width = static_cast<std::int16_t>(row.section.width);
    target.maximum = row.maximum;
    target.offset = static_cast<std::int16_t>(row.offset);
    target.type = row.type;
    return target;
}

void store_new_car_value(const Row& row) {
    if (row.type == byte) set_par_byte(row.offset, static_cast<std::uint8_t>(row.new_car));
    if (row.type == word) set_par_word(target_word_offset(row.offset), static_cast<std::uint16_t>(row.new_car));
}

constexpr int heaviest = 65535;

} // namespace

void INITPARAMTARGETS() {
    PTARGET = {};
    for (int row = 1; row <= parameter_targets; ++row) {
        PTARGET[row] = target_of(rows[static_cast<std::size_t>(row - 1)]);
        store_new_car_value(rows[static_cast<std::size_t>(row - 1)]);
    }
    PTARGET[mass_row].unit = "kg";
    PTARGET[mass_row].factor = 43.7F;
    TEXTOPTION = {"Flexible", "Rigid", "Anti-PG", "None", "No (bug-free)"};
    CARNAME = "New car";
    CARSIGNNAME = "New!";
    CARINFO = "New car]";
    // ODDITY powergear-unclassified-at-start (kept): a new car shows option 0 although its mass is of another class;
    // only a loaded file or a typed mass classifies.
}

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
    std::int32_t& option = PTARGET[powergear_row].option_value;
    if (apply)
        set_par_word(par_offset::mass, static_cast<std::uint16_t>(nearest_of_class(mass, option)));
    else
        option = powergear_class(mass);
}
