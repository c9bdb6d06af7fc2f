// A car in which the checks find nothing, small and built by hand.
#pragma once

#include "model/bitmap_table.h"
#include "model/body.h"
#include "model/dimensions.h"
#include "model/document.h"
#include "model/parameters.h"
#include "support/models.h"

#include <string>

constexpr std::uint16_t faultless_jobs = 3;

inline SHAPEPRIM& add_face(SHAPEMODEL& model, const std::vector<SHAPEVERTEX>& corners) {
    std::vector<int> indices;
    for (const SHAPEVERTEX& corner : corners)
        indices.push_back(add_vertex(model, corner.x, corner.y, corner.z));
    SHAPEPRIM& face = add_primitive(model, static_cast<int>(corners.size()), indices);
    for (std::uint16_t job = 0; job < max_paint_jobs; ++job)
        face.material[job] = static_cast<std::uint16_t>(40 + job);
    return face;
}

inline SHAPEMODEL faultless_model() {
    SHAPEMODEL model = model_with_wheels();
    add_face(model, {{-0.5, -1, 0.2}, {0.5, -1, 0.2}, {0.5, 1, 1.2}, {-0.5, 1, 1.2}});
    fit_bounding_box(model);
    return model;
}

inline void add_bitmap(CarDocument& car, const std::string& id, int size = 60) {
    BitmapRecord& bitmap = car.bitmaps[++car.bitmap_count];
    bitmap = {};
    bitmap.name = id;
    bitmap.width = bitmap.height = static_cast<std::uint16_t>(size);
    bitmap.pixels = Pixels(static_cast<std::size_t>(size) * static_cast<std::size_t>(size), 1);
    link_mask(bitmap);
}

inline BitmapRecord& bitmap_of(CarDocument& car, std::string_view id) {
    for (int i = 1; i <= car.bitmap_count; ++i)
        if (car.bitmaps[i].name == id) return car.bitmaps[i];
    return car.bitmaps[0];
}
inline void remove_bitmap_of(CarDocument& car, std::string_view id) {
    bitmap_of(car, id) = car.bitmaps[car.bitmap_count];
    car.bitmaps[car.bitmap_count--] = {};
}

inline CarDocument faultless_car() {
    CarDocument car;
    car.name = "Faultless";
    car.sign_name = "None";
    car.information = "Nothing to mend]";
    car.paint_jobs = faultless_jobs;
    for (int slot = 0; slot < 3; ++slot)
        car.models[static_cast<std::size_t>(slot)] = faultless_model();
    for (auto& piece : car.explosions)
        add_face(piece.edit(), {{0, 0, 0}, {1, 0, 0}, {0, 0, 1}});
    for (const char* id : {"dash", "dast", "dasm", "roof", "whl1", "whl2", "whl3", "ins1", "ins2", "ins3", "inm1",
                           "inm3", "gbox", "gnob", "gnab", "dot ", "dota", "dot1", "dot2"})
        add_bitmap(car, id);
    for (char digit = '0'; digit <= '9'; ++digit)
        add_bitmap(car, std::string("dig") + digit);
    car.par[par_offset::gear_count] = std::byte{2};
    set_word(car.par, 16, 3000);
    set_word(car.par, 18, 2000);
    for (int i = 0; i < 4; ++i)
        set_word(car.par, par_offset::idle_rpm + 2 * i, static_cast<std::uint16_t>(1000 * (i + 1)));
    car.par[par_offset::torque_curve + 20] = std::byte{80};
    store_dimensions(*car.models[1], car.par);
    store_wheel_positions(*car.models[1], car.par);
    return car;
}
