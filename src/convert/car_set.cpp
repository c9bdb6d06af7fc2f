#include "convert/car_set.h"

#include "base/file_io.h"
#include "base/text.h"
#include "convert/input.h"
#include "convert/refusal.h"
#include "formats/car_files.h"
#include "formats/project_file.h"
#include "formats/resource_archive.h"
#include "formats/shape_file.h"
#include "model/bitmap_table.h"
#include "model/car.h"
#include "model/document.h"
#include "model/items.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <utility>

namespace {

constexpr std::size_t first_bitmap_file = 2, second_bitmap_file = 3;

// "FOLDER/" and "abcd" of "FOLDER/abcd".
std::pair<std::string, std::string> parts_of(const std::string& path) {
    const std::size_t name_at = path.rfind('/') + 1;
    return {path.substr(0, name_at), lower_case(path.substr(name_at))};
}

// The file's name as the folder has it: DOS disks give names in capitals, which this system tells apart.
std::string name_in_folder(const std::string& folder, const std::string& name) {
    if (file_exists(folder + name)) return name;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder.empty() ? "." : folder, error))
        if (std::string found = entry.path().filename(); lower_case(found) == name) return found;
    return name;
}

// --- the order of the bitmaps ---------------------------------------------------------------------------------------

using Ids = std::vector<std::string>;

Ids ids_of(const Bytes& file) {
    Ids ids;
    for (const ArchiveEntry& entry : read_archive_directory(file).entries)
        if (std::ranges::find(ids, entry.id) == ids.end()) ids.push_back(entry.id);
    return ids;
}

// Both lists in one, so that each keeps its own order: what the second one has alone goes before the next id that it
// shares with the first.
Ids joined_order(Ids order, const Ids& second) {
    Ids alone;
    for (const std::string& id : second) {
        const auto shared = std::ranges::find(order, id);
        if (shared == order.end()) {
            alone.push_back(id);
        } else {
            order.insert(shared, alone.begin(), alone.end());
            alone.clear();
        }
    }
    order.insert(order.end(), alone.begin(), alone.end());
    return order;
}

void arrange_bitmaps(const Ids& order) {
    std::map<std::string, std::size_t> place;
    for (const std::string& id : order)
        place.try_emplace(id, place.size());
    std::stable_sort(BITMAP.begin() + 1, BITMAP.begin() + 1 + BITMAPS,
                     [&](const BitmapRecord& a, const BitmapRecord& b) { return place[a.name] < place[b.name]; });
    UPDATEDASHITEMS();
}

// Of a car's files only the shapes can be less than the car.
Bytes required_fit(EncodedFile file, const std::string& path) {
    if (file.cut)
        throw Refusal(path + ": a model has more than the file's numbers can say (255 vertices, 255 primitives, "
                             "coordinates within 16 bits)");
    return std::move(file.bytes);
}

} // namespace

void begin_car() {
    DOCUMENT = CarDocument{};
    CURMODEL = 0;
    CURPJ = 0;
    INITDASHITEMS();
}

std::vector<std::string> load_car_files(const std::string& path) {
    const auto [folder, identifier] = parts_of(path);
    std::vector<Bytes> contents;
    std::vector<std::string> names;
    for (const CarFile& file : car_files) {
        names.push_back(name_in_folder(folder, car_file_name(file, identifier)));
        require(file.load(folder + names.back()));
        contents.push_back(required_content(folder + names.back()));
    }
    arrange_bitmaps(joined_order(ids_of(contents[first_bitmap_file]), ids_of(contents[second_bitmap_file])));
    std::vector<std::string> changed;
    for (std::size_t i = 0; i < contents.size(); ++i)
        if (car_files[i].content().bytes != contents[i]) changed.push_back(names[i]);
    return changed;
}

void load_project(const std::string& path) { require(LOADCAR(path)); }

std::vector<NamedFile> car_files_of_tables(const std::string& path) {
    const auto [folder, identifier] = parts_of(path);
    std::vector<NamedFile> files;
    for (const CarFile& file : car_files)
        files.push_back({folder + car_file_name(file, identifier), required_fit(file.content(), path)});
    return files;
}

NamedFile project_file_of_tables(const std::string& path) { return {path, encode_project_file(project_of_tables())}; }

NamedFile shape_file_of_tables(const std::string& path) { return {path, required_fit(shape_file_of_car(), path)}; }
