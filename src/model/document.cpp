#include "model/document.h"

#include "base/reset.h"

#include <tuple>

CarDocument DOCUMENT;

bool CarDocument::operator==(const CarDocument& other) const {
    const auto content = [](const CarDocument& car) {
        return std::tie(car.par, car.name, car.sign_name, car.information, car.power_gear, car.models, car.explosions,
                        car.paint_jobs, car.bitmap_count, car.bitmaps);
    };
    return content(*this) == content(other);
}

namespace {
const ResetWithProgram registered([] { DOCUMENT = CarDocument{}; });
}
