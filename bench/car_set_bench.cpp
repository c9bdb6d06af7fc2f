// Loading a whole car from memory against copying the same bytes through a checksum, and where the time goes.
//
// The car is as large as real ones: models of about 200 vertices and primitives, a cockpit of full-size artwork.
#include "alternate.h"
#include "formats/bitmap_file.h"
#include "formats/parameter_file.h"
#include "formats/resource_archive.h"
#include "formats/shape_file.h"
#include "model/document.h"
#include "model/items.h"
#include "model/preview.h"

#include <cstdio>
#include <memory>
#include <string>
#include <utility>

namespace {
constexpr int rounds = 101;

struct CarSet {
    Bytes parameters, shapes, dashboard, dots;
    std::size_t size() const { return parameters.size() + shapes.size() + dashboard.size() + dots.size(); }
};

Bytes parameter_file() {
    ParameterFile car;
    for (std::size_t i = 0; i < car.par.size(); ++i)
        car.par[i] = static_cast<std::byte>(i * 13 & 0xFF);
    car.name = "A car to measure with";
    car.sign_name = "MEASURE";
    car.information = std::string(600, 'x');
    return encode_parameter_file(car);
}

void fill_model(SHAPEMODEL& model, std::uint16_t vertices, std::uint16_t primitives, double scale) {
    model.nverts = vertices;
    model.nprims = primitives;
    for (std::size_t i = 0; i < vertices; ++i) {
        const auto number = static_cast<double>(i);
        model.verts[i] = {number * scale, (200 - number) * scale, (number * 3 - 50) * scale, 0};
    }
    for (std::size_t i = 0; i < primitives; ++i) {
        model.prims[i].type = static_cast<std::uint8_t>(3 + i % 3);
        for (std::size_t corner = 0; corner < 5; ++corner)
            model.prims[i].vertex[corner] = static_cast<std::uint16_t>((i + corner) % vertices);
    }
}

Bytes shape_file() {
    const auto shapes = std::make_unique<ShapeFile>();
    shapes->paint_jobs = 7;
    for (int k = 0; k < shape_file_models; ++k) {
        const bool car = k < 3;
        fill_model(shapes->models[static_cast<std::size_t>(k)], car ? 200 : 12, car ? 220 : 8, shape_scale(k));
    }
    return encode_shape_file(*shapes);
}

void add_bitmap(std::vector<ArchiveResource>& resources, const char* id, int width, int height) {
    ByteWriter writer;
    for (const int word : {width, height, 0, 0, 10, 20})
        writer.u16(static_cast<std::uint16_t>(word));
    writer.u32(0);
    for (int i = 0; i < width * height; ++i)
        writer.u8(static_cast<std::uint8_t>(i * 31 >> 3 & 0xFF));
    resources.push_back({id, writer.take()});
}

Bytes dashboard_file() {
    std::vector<ArchiveResource> resources;
    for (const char* id : {"dash", "dast", "dasm"})
        add_bitmap(resources, id, 320, 100);
    add_bitmap(resources, "roof", 320, 40);
    for (const char* id : {"whl1", "whl2", "whl3"})
        add_bitmap(resources, id, 200, 90);
    for (const char* id : {"ins1", "inm1", "ins2", "ins3", "inm3"})
        add_bitmap(resources, id, 100, 40);
    add_bitmap(resources, "gbox", 60, 60);
    return encode_archive(resources);
}

Bytes dots_file() {
    std::vector<ArchiveResource> resources;
    for (const char* id : {"dot ", "dota", "dot1", "dot2", "gnob", "gnab"})
        add_bitmap(resources, id, 8, 8);
    for (int digit = 0; digit <= 9; ++digit)
        add_bitmap(resources, ("dig" + std::to_string(digit)).c_str(), 6, 9);
    return encode_archive(resources);
}

// What any reader must do at least: touch every byte once and put it somewhere.
std::uint64_t copy_with_checksum(const Bytes& from, Bytes& to) {
    to.resize(from.size());
    std::uint64_t sum = 0;
    for (std::size_t i = 0; i < from.size(); ++i) {
        sum = sum * 31 + std::to_integer<std::uint64_t>(from[i]);
        to[i] = from[i];
    }
    return sum;
}

void merge_both(const CarSet& set) {
    merge_bitmap_file(decode_bitmap_file(set.dashboard));
    merge_bitmap_file(decode_bitmap_file(set.dots));
}

std::size_t decode_both(const CarSet& set) {
    return decode_bitmap_file(set.dashboard).bitmaps.size() + decode_bitmap_file(set.dots).bitmaps.size();
}

void paint_all_previews() {
    for (int i = 1; i <= BITMAPS; ++i) {
        preview(BITMAP[i], 2);
        preview(BITMAP[i], 3);
    }
}

// What LOAD3SH does with the bytes: all models out of the tables, decoded over, and back into them.
void load_shapes(const Bytes& file) {
    const auto shapes = shapes_of_tables();
    decode_shape_file(file, all_shapes, *shapes);
    keep_shapes(*shapes);
}

void load_parameters(const Bytes& file) {
    ParameterFile car{PAR, CARNAME, CARSIGNNAME, CARINFO};
    decode_parameter_file(file, car);
    PAR = car.par;
    CARNAME = std::move(car.name);
    CARSIGNNAME = std::move(car.sign_name);
    CARINFO = std::move(car.information);
}

void load(const CarSet& set) {
    load_parameters(set.parameters);
    load_shapes(set.shapes);
    merge_both(set);
}
} // namespace

int main() {
    const CarSet set{parameter_file(), shape_file(), dashboard_file(), dots_file()};
    INITDASHITEMS();
    Bytes copy;
    std::uint64_t sum = 0;
    const auto copy_all = [&] {
        for (const Bytes* file : {&set.parameters, &set.shapes, &set.dashboard, &set.dots})
            sum += copy_with_checksum(*file, copy);
    };

    const Comparison whole = compare(
        rounds, [&] { load(set); }, copy_all);
    std::printf("four files, %zu bytes (checksum %016llx, %d bitmaps, %d vertices)\n", set.size(),
                static_cast<unsigned long long>(sum), int{BITMAPS}, int{CAR[0]->nverts});
    std::printf("copy with checksum  %9.1f us\n", 1e3 * whole.theirs);
    std::printf("load                %9.1f us   ratio %.2f\n", 1e3 * whole.ours, 1 / whole.ratio);
    const auto share = [&](const char* part, auto&& work) {
        const Comparison of_whole = compare(rounds, work, [&] { load(set); });
        std::printf("  %-16s  %9.1f us   %5.1f %%\n", part, 1e3 * of_whole.ours, 100 / of_whole.ratio);
    };
    share("parameters", [&] { load_parameters(set.parameters); });
    share("shapes", [&] { load_shapes(set.shapes); });
    share("  decoding", [&, shapes = shapes_of_tables()] { decode_shape_file(set.shapes, all_shapes, *shapes); });
    share("bitmaps", [&] { merge_both(set); });
    share("  decoding", [&] { sum += decode_both(set); });
    share("not: previews", paint_all_previews);
    return 0;
}
