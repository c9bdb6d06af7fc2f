#include "formats/car_files.h"

#include "formats/bitmap_file.h"
#include "formats/parameter_file.h"
#include "formats/shape_file.h"

namespace {

FileOutcome load_all_shapes(const std::string& filename) { return LOAD3SH(filename, all_shapes); }

template <BitmapSet set>
EncodedFile bitmaps_of_car() {
    return {encode_bitmap_file(set)};
}

} // namespace

constexpr std::array<CarFile, 4> car_files = {{
    {"car", ".res", LOADRES, parameter_file_of_car},
    {"st", ".3sh", load_all_shapes, shape_file_of_car},
    {"stda", ".vsh", LOADVSH, bitmaps_of_car<BitmapSet::dashboard>},
    {"stdb", ".vsh", LOADVSH, bitmaps_of_car<BitmapSet::dots_and_digits>},
}};

std::string car_file_name(const CarFile& file, std::string_view identifier) {
    return std::string(file.prefix) + std::string(identifier) + std::string(file.extension);
}
