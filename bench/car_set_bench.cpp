// Loading a whole car's four files against reading them and working out their SHA-256, and where the time goes.
//
// The car is as large as real ones: models of about 200 vertices and primitives, a cockpit of full-size artwork.
#include "alternate.h"
#include "base/file_io.h"
#include "formats/bitmap_file.h"
#include "formats/parameter_file.h"
#include "formats/resource_archive.h"
#include "formats/shape_file.h"
#include "model/document.h"
#include "model/items.h"
#include "model/preview.h"

#include <benchmark/benchmark.h>
#include <openssl/evp.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>

namespace {
constexpr int rounds = 101;
constexpr double most_times_reading = 1;

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

// Both sides read the same files of a folder of their own.
class CarFiles {
public:
    explicit CarFiles(const CarSet& set) {
        std::string pattern = (std::filesystem::temp_directory_path() / "karosmit-bench-XXXXXX").string();
        if (!::mkdtemp(pattern.data())) std::abort();
        folder_ = pattern;
        save_file(parameters(), set.parameters);
        save_file(shapes(), set.shapes);
        save_file(dashboard(), set.dashboard);
        save_file(dots(), set.dots);
    }
    ~CarFiles() { std::filesystem::remove_all(folder_); }
    CarFiles(const CarFiles&) = delete;
    CarFiles& operator=(const CarFiles&) = delete;

    void load() const {
        LOADRES(parameters());
        LOAD3SH(shapes(), all_shapes);
        LOADVSH(dashboard());
        LOADVSH(dots());
    }

    void read_with_sha256() const {
        unsigned char digest[EVP_MAX_MD_SIZE];
        for (const std::string& path : {parameters(), shapes(), dashboard(), dots()}) {
            const FileContent file = read_file(path, largest_file);
            EVP_Digest(file->data(), file->size(), digest, nullptr, EVP_sha256(), nullptr);
            benchmark::DoNotOptimize(digest);
        }
    }

private:
    std::string parameters() const { return folder_ + "/carmeas.res"; }
    std::string shapes() const { return folder_ + "/stmeas.3sh"; }
    std::string dashboard() const { return folder_ + "/stdameas.vsh"; }
    std::string dots() const { return folder_ + "/stdbmeas.vsh"; }

    std::string folder_;
};

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
    std::uint64_t sum = 0;
    const CarFiles files(set);
    const Comparison whole = compare(
        rounds, [&] { files.load(); }, [&] { files.read_with_sha256(); });
    std::printf("four files, %zu bytes, %d bitmaps, %d vertices\n", set.size(), int{BITMAPS}, int{CAR[0]->nverts});
    print_times("loading a car", "reading and SHA-256", whole);
    const bool kept = report_at_most("loading a car", 1 / whole.ratio, "x reading and SHA-256", most_times_reading);
    const auto share = [&](const char* part, auto&& work) {
        const Comparison of_whole = compare(rounds, work, [&] { load(set); });
        std::printf("  %-16s  %9.1f us   %5.1f %%\n", part, 1e3 * of_whole.our_median, 100 / of_whole.ratio);
    };
    share("parameters", [&] { load_parameters(set.parameters); });
    share("shapes", [&] { load_shapes(set.shapes); });
    share("  decoding", [&, shapes = shapes_of_tables()] { decode_shape_file(set.shapes, all_shapes, *shapes); });
    share("bitmaps", [&] { merge_both(set); });
    share("  decoding", [&] { sum += decode_both(set); });
    share("not: previews", paint_all_previews);
    return kept ? 0 : 1;
}
