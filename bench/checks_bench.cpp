// The checks of a car at the tables' capacity: every model of 512 polygons with ten corners each, a hundred bitmaps.
// The page of checks must be there within a frame of 16 milliseconds.
#include "alternate.h"
#include "full_document.h"

#include "model/check_car.h"

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

constexpr int rounds = 51;

// Round, flat polygons that have all their vertices: none is passed over early.
void make_round(SHAPEMODEL& model) {
    constexpr std::size_t corners = primitive_type::largest_polygon;
    for (std::size_t i = 0; i < shape_capacity; ++i) {
        const double angle = 6.283185307 * static_cast<double>(i % corners) / static_cast<double>(corners);
        model.verts[i] = {std::cos(angle), std::sin(angle), static_cast<double>(i / corners)};
        for (std::size_t corner = 0; corner < corners; ++corner)
            model.prims[i].vertex[corner] = static_cast<std::uint16_t>(i / corners * corners % 500 + corner);
    }
}

} // namespace

int main() {
    fill_document();
    for (auto& model : CAR)
        make_round(model.edit());
    for (auto& model : CEXP)
        make_round(model.edit());
    PAR.fill(std::byte{0xFF});
    CARINFO = std::string(1023, ']');
    std::vector<double> times;
    std::size_t found = 0;
    for (int round = 0; round < rounds; ++round)
        times.push_back(milliseconds_of([&] { found = check_car(DOCUMENT).size(); }));
    std::printf("checking a car at capacity: fastest %.3f milliseconds, %zu findings\n", std::ranges::min(times),
                found);
    return report_at_most("checking a car at capacity", median(times), "milliseconds, median", 16) ? 0 : 1;
}
