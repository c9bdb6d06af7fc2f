#include "params/parameter_table.h"

#include "base/reset.h"
#include "model/new_car.h"
#include "model/parameters.h"

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
};

constexpr auto word = target_type::word;
constexpr auto byte = target_type::byte;

// In the order of PTARGET, from row 1.
constexpr std::array<Row, parameter_targets> rows{{
    {"Mass", general, 2, word, par_offset::mass, 65535},
    {"Powergear", general, 3, target_type::option, -1, 4},
    {"Brakes", general, 4, word, par_offset::brakes, 65535},
    {"Air drag", general, 5, word, par_offset::air_drag, 65535},
    {"C. height", general, 6, word, par_offset::centre_height, 65535},
    {"Intrinsic", grip, 0, word, par_offset::intrinsic_grip, 65535},
    {"On asphalt", grip, 1, word, par_offset::grip_on_asphalt, 65535},
    {"On dirt", grip, 2, word, par_offset::grip_on_dirt, 65535},
    {"On ice", grip, 3, word, par_offset::grip_on_ice, 65535},
    {"On grass", grip, 4, word, par_offset::grip_on_grass, 65535},
    {"Airborne", grip, 5, word, par_offset::grip_airborne, 65535},
    {"Gears", gears, 0, byte, par_offset::gear_count, 6},
    {"1st ratio", gears, 1, word, par_offset::gear_ratio(1), 65535},
    {"2nd ratio", gears, 2, word, par_offset::gear_ratio(2), 65535},
    // ODDITY third-ratio-label (kept): the label is the gear's number and "th" from the third gear on, "3th" included.
    {"3th ratio", gears, 3, word, par_offset::gear_ratio(3), 65535},
    {"4th ratio", gears, 4, word, par_offset::gear_ratio(4), 65535},
    {"5th ratio", gears, 5, word, par_offset::gear_ratio(5), 65535},
    {"6th ratio", gears, 6, word, par_offset::gear_ratio(6), 65535},
    {"Purple", mysterious, 0, byte, par_offset::purple, 255},
    {"Yellow", mysterious, 1, word, par_offset::yellow, 65535},
    {"Blue", mysterious, 2, word, par_offset::blue, 65535},
    {"Red #1", mysterious, 3, word, par_offset::red(1), 65535},
    {"Red #2", mysterious, 4, word, par_offset::red(2), 65535},
    {"Red #3", mysterious, 5, word, par_offset::red(3), 65535},
    {"Red #4", mysterious, 6, word, par_offset::red(4), 65535},
    {"Red #5", mysterious, 7, word, par_offset::red(5), 65535},
    {"Red #6", mysterious, 8, word, par_offset::red(6), 65535},
    {"Red #7", mysterious, 9, word, par_offset::red(7), 65535},
    {"Orange #1", mysterious, 10, word, par_offset::orange(1), 65535},
    {"Orange #2", mysterious, 11, word, par_offset::orange(2), 65535},
    {"Orange #3", mysterious, 12, word, par_offset::orange(3), 65535},
    {"Orange #4", mysterious, 13, word, par_offset::orange(4), 65535},
    {"Orange #5", mysterious, 14, word, par_offset::orange(5), 65535},
    {"Car name", general, 0, target_type::car_name, 208, 21},
    {"Sign name", general, 1, target_type::sign_name, 208, 4},
    {"Idle RPM", rpm, 0, word, par_offset::idle_rpm, 65535},
    {"Downshift RPM", rpm, 1, word, par_offset::downshift_rpm, 65535},
    {"Upshift RPM", rpm, 2, word, par_offset::upshift_rpm, 65535},
    {"Maximum RPM", rpm, 3, word, par_offset::maximum_rpm, 65535},
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

} // namespace

void INITPARAMTARGETS() {
    PTARGET = {};
    for (int row = 1; row <= parameter_targets; ++row)
        PTARGET[row] = target_of(rows[static_cast<std::size_t>(row - 1)]);
    PTARGET[mass_row].unit = "kg";
    PTARGET[mass_row].factor = 43.7F;
    TEXTOPTION = {"Flexible", "Rigid", "Anti-PG", "None", "No (bug-free)"};
    new_car();
}

namespace {
const ResetWithProgram registered([] {
    PTARGET = {};
    TEXTOPTION = {};
});
}
