#include "formats/saved_car.h"

#include "base/reset.h"
#include "base/text.h"
#include "formats/bitmap_file.h"
#include "formats/parameter_file.h"
#include "model/car.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <set>
#include <tuple>
#include <vector>

namespace {

using CarOnDisk = std::shared_ptr<const CarDocument>;

// The files that hold the parts of a car; none where a part is in no file.
struct Origin {
    std::string name;
    std::array<CarOnDisk, car_parts> held;
    std::array<std::string, car_parts> paths;
};

constexpr std::size_t most_origins = 16; // of an older load everything counts as unsaved
constexpr int largest_count = 255;       // of vertices and of primitives in a shape file

struct Files {
    std::map<std::uint32_t, Origin> origins; // by the number of the load
    std::set<std::string> known;
    std::uint32_t loads = 0, revision = 0;
};
Files files;
const Origin forgotten{}; // also for the end of the program, which asks last

std::size_t number(CarPart part) { return static_cast<std::size_t>(part); }

CarParts only(CarPart part) { return CarParts().set(number(part)); }

CarPart part_of(const BitmapRecord& bitmap) {
    if (belongs_to(bitmap, BitmapSet::dashboard)) return CarPart::dashboard;
    return belongs_to(bitmap, BitmapSet::dots_and_digits) ? CarPart::dots : CarPart::others;
}

// By name: their order is that of the loads that brought them, and no difference.
std::vector<const BitmapRecord*> bitmaps_of(const CarDocument& car, CarPart part) {
    std::vector<const BitmapRecord*> found;
    for (int i = 1; i <= car.bitmap_count; ++i)
        if (part_of(car.bitmaps[i]) == part) found.push_back(&car.bitmaps[i]);
    std::ranges::stable_sort(found, {}, [](const BitmapRecord* bitmap) { return bitmap->name; });
    return found;
}

bool same_bitmaps(const CarDocument& a, const CarDocument& b, CarPart part) {
    if (a.bitmap_count == b.bitmap_count && a.bitmaps == b.bitmaps) return true; // mostly, and quick
    return std::ranges::equal(bitmaps_of(a, part), bitmaps_of(b, part),
                              [](const BitmapRecord* one, const BitmapRecord* other) { return *one == *other; });
}

constexpr std::size_t first_auxiliary = 3;

auto parameters_of(const CarDocument& car) { return std::tie(car.par, car.name, car.sign_name, car.information); }
auto auxiliary_of(const CarDocument& car) { return std::span(car.models).subspan(first_auxiliary); }
auto shapes_of(const CarDocument& car) { return std::span(car.models).first(first_auxiliary); }

bool same(const CarDocument& a, const CarDocument& b, CarPart part) {
    switch (part) {
    case CarPart::parameters: return parameters_of(a) == parameters_of(b);
    case CarPart::shapes:
        return std::ranges::equal(shapes_of(a), shapes_of(b)) && a.explosions == b.explosions &&
               a.paint_jobs == b.paint_jobs;
    case CarPart::auxiliary: return std::ranges::equal(auxiliary_of(a), auxiliary_of(b));
    default: return same_bitmaps(a, b, part);
    }
}

bool is_empty(const Shared<SHAPEMODEL>& model) { return model->nverts == 0 && model->nprims == 0; }

// Whether there is nothing to save; the game's own files have always something.
bool is_nothing(const CarDocument& car, CarPart part) {
    if (part == CarPart::auxiliary) return std::ranges::all_of(auxiliary_of(car), is_empty);
    return part == CarPart::others && bitmaps_of(car, part).empty();
}

const Origin& origin_of(const CarDocument& car) {
    const auto found = files.origins.find(car.origin.load);
    return found == files.origins.end() ? forgotten : found->second;
}

bool is_saved(const CarDocument& car, CarPart part) {
    const CarOnDisk& held = origin_of(car).held[number(part)];
    return held ? same(*held, car, part) : is_nothing(car, part);
}

CarParts saved_parts(const CarDocument& car) {
    CarParts saved;
    for (std::size_t part = 0; part < car_parts; ++part)
        saved[part] = is_saved(car, static_cast<CarPart>(part));
    return saved;
}

// What a file does not bring stays as it was: of bitmaps those that still have their pixels from before.
bool brought_whole(const CarDocument& before, CarPart part) {
    if (part != CarPart::dashboard && part != CarPart::dots) return true;
    const auto earlier = bitmaps_of(before, part);
    return std::ranges::none_of(bitmaps_of(DOCUMENT, part), [&](const BitmapRecord* bitmap) {
        return std::ranges::any_of(earlier, [&](const auto* one) { return one->pixels.is(bitmap->pixels); });
    });
}

Origin& begin_load(const std::string& name, const Origin& earlier) {
    DOCUMENT.origin.loaded = name;
    DOCUMENT.origin.load = ++files.loads;
    ++files.revision;
    Origin& origin = files.origins[files.loads] = earlier;
    if (files.origins.size() > most_origins) files.origins.erase(files.origins.begin());
    return origin;
}

void put_into(Origin& origin, const CarOnDisk& car, const CarFileOnDisk& file) {
    for (std::size_t part = 0; part < car_parts; ++part) {
        if (!file.parts[part]) continue;
        origin.held[part] = car;
        origin.paths[part] = file.path;
    }
}

// Whoever relies on the file, which may be a car that was loaded earlier, finds this car in it.
void overwrite(const CarOnDisk& car, const CarFileOnDisk& file) {
    for (auto& [load, origin] : files.origins)
        for (std::size_t part = 0; part < car_parts; ++part)
            if (origin.paths[part] == file.path) origin.held[part] = car;
}

// A parameter file's texts are read up to a limit, or to a zero within.
bool texts_fit() {
    const ParameterFile car{PAR, CARNAME, CARSIGNNAME, CARINFO};
    ParameterFile read;
    decode_parameter_file(encode_parameter_file(car), read);
    return read == car;
}

CarParts parts_held_by(const CarFileOnDisk& file) {
    return file.parts == only(CarPart::parameters) && !texts_fit() ? CarParts() : file.parts;
}

std::string reason_for(const CarParts& saved) {
    const auto too_large = [](const Shared<SHAPEMODEL>& model) {
        return model->nverts > largest_count || model->nprims > largest_count;
    };
    if (!saved[number(CarPart::auxiliary)]) return "only a .car holds Aux 1 and 2";
    if (!saved[number(CarPart::shapes)] &&
        (std::ranges::any_of(shapes_of(DOCUMENT), too_large) || std::ranges::any_of(DOCUMENT.explosions, too_large)))
        return "a .3sh holds 255 vertices and primitives";
    if (!saved[number(CarPart::parameters)] && !texts_fit()) return "only a .car holds such a long text";
    if (!saved[number(CarPart::others)])
        return "only a .car holds bitmap " + bitmaps_of(DOCUMENT, CarPart::others).front()->name;
    return {};
}

} // namespace

CarParts parts_in(std::string_view file_name) {
    const std::string extension = extension_of(file_name);
    if (extension == ".car") return CarParts().set();
    if (extension == ".res" || extension == ".pre") return only(CarPart::parameters);
    if (extension == ".3sh" || extension == ".p3s") return only(CarPart::shapes);
    if (extension != ".vsh" && extension != ".pvs") return {};
    return only(bitmap_set_for(file_name) == BitmapSet::dashboard ? CarPart::dashboard : CarPart::dots);
}

void begin_with_saved_car() {
    Origin& start = files.origins[DOCUMENT.origin.load];
    start = {};
    start.held.fill(std::make_shared<const CarDocument>(DOCUMENT));
    ++files.revision;
}

void note_load(const CarDocument& before, const std::string& name, std::span<const CarFileOnDisk> loaded) {
    CarParts saved = saved_parts(before), brought;
    for (const CarFileOnDisk& file : loaded) {
        files.known.insert(file.path);
        for (std::size_t part = 0; part < car_parts; ++part)
            if (file.parts[part] && brought_whole(before, static_cast<CarPart>(part))) saved.set(part);
        brought |= file.parts;
    }
    Origin& origin = begin_load(name, Origin(origin_of(before)));
    if (brought.none()) return;
    origin.name = name;
    const auto car = std::make_shared<const CarDocument>(DOCUMENT);
    for (const CarFileOnDisk& file : loaded)
        put_into(origin, car, {file.path, file.parts & saved});
    for (std::size_t part = 0; part < car_parts; ++part)
        if (saved[part]) origin.held[part] = car;
}

void note_save(const std::string& name, std::span<const CarFileOnDisk> saved) {
    ++files.revision;
    Origin& origin = files.origins[DOCUMENT.origin.load];
    const auto car = std::make_shared<const CarDocument>(DOCUMENT);
    for (const CarFileOnDisk& file : saved) {
        files.known.insert(file.path);
        const CarFileOnDisk whole{file.path, parts_held_by(file)};
        overwrite(whole.parts.any() ? car : nullptr, file);
        put_into(origin, car, whole);
        if (whole.parts.any()) origin.name = name;
    }
}

void note_load_of_kept_work(const std::string& name) { begin_load(name, {}).name = name; }

SavedCar saved_car() {
    const CarParts saved = saved_parts(DOCUMENT);
    if (saved.all()) return {origin_of(DOCUMENT).name};
    return {origin_of(DOCUMENT).name, true, reason_for(saved)};
}

std::uint32_t saved_car_revision() { return files.revision; }

bool is_known_file(const std::string& path) { return files.known.contains(path); }

namespace {
const ResetWithProgram registered([] { files = {}; });
}
