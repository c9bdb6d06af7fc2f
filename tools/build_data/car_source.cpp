#include "car_source.h"
#include "model/document.h"

#include "base/text.h"
#include "model/body.h"
#include "model/car.h"
#include "model/generators.h"
#include "model/parameters.h"
#include "model/shape_parts.h"
#include "model/wheels.h"
#include "params/parameter_table.h"
#include "source.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr std::uint32_t always_shown = 0xFFFFFFFF;
constexpr std::uint8_t two_sided = 1;
constexpr std::size_t paint_jobs = 7;

using PaintTable = std::map<std::string, std::array<std::uint16_t, paint_jobs>>;

// --- car.txt -------------------------------------------------------------------------------------------------------

bool is_number_row(const PARAMINPUT& target) {
    return target.type == target_type::byte || target.type == target_type::word;
}

void store_parameter(const SourceLine& line, const std::string& label, const std::string& value,
                     std::set<std::string>& stored) {
    const auto target = std::ranges::find_if(
        PTARGET, [&](const PARAMINPUT& row) { return row.label == label && !label.empty() && is_number_row(row); });
    if (target == PTARGET.end()) line.fail("no parameter is called \"" + label + "\"");
    if (!stored.insert(label).second) line.fail("\"" + label + "\" a second time");
    const long number = whole_number(line, value);
    if (number < target->minimum || number > target->maximum) line.fail("out of range");
    if (target->type == target_type::byte) {
        set_par_byte(target->offset, static_cast<std::uint8_t>(number));
    } else {
        set_par_word(target_word_offset(target->offset), static_cast<std::uint16_t>(number));
    }
}

void check_all_stored(const std::filesystem::path& file, const std::set<std::string>& stored) {
    for (const PARAMINPUT& row : PTARGET)
        if (is_number_row(row) && !stored.contains(row.label))
            throw SourceError(file.string() + ": no \"" + row.label + "\"");
}

void append_torque(const SourceLine& line, std::string_view numbers, std::vector<long>& torque) {
    for (numbers = trimmed(numbers); !numbers.empty();) {
        const std::string_view number = numbers.substr(0, numbers.find(' '));
        torque.push_back(whole_number(line, std::string(number)));
        if (torque.back() < 0 || torque.back() > 255) line.fail("a torque byte is 0 to 255");
        numbers = without_leading_blanks(numbers.substr(number.size()));
    }
}

void read_parameters(const std::filesystem::path& file) {
    std::vector<long> torque;
    std::set<std::string> stored;
    CARINFO.clear();
    for (const SourceLine& line : read_source_lines(file)) {
        const std::size_t equals = line.text.find('=');
        if (equals == std::string::npos) line.fail("no \"=\"");
        const std::string key(trimmed(std::string_view(line.text).substr(0, equals)));
        std::string value = line.text.substr(equals + 1);
        if (value.starts_with(' ')) value.erase(0, 1);
        if (key == "name")
            CARNAME = value;
        else if (key == "sign")
            CARSIGNNAME = value;
        else if (key == "text")
            CARINFO += value + "]";
        else if (key == "torque")
            append_torque(line, value, torque);
        else
            store_parameter(line, key, value, stored);
    }
    check_all_stored(file, stored);
    if (torque.size() != torque_points) throw SourceError(file.string() + ": not 104 torque bytes");
    for (int i = 0; i < torque_points; ++i)
        set_par_byte(par_offset::torque_curve + i, static_cast<std::uint8_t>(torque[static_cast<std::size_t>(i)]));
}

// --- models --------------------------------------------------------------------------------------------------------

PaintTable read_paint(const std::filesystem::path& file) {
    PaintTable paint;
    for (const SourceLine& line : read_source_lines(file)) {
        auto& materials = paint[line.field(0)];
        for (std::size_t job = 0; job < paint_jobs; ++job)
            materials[job] = static_cast<std::uint16_t>(line.integer(job + 1));
    }
    return paint;
}

void add_vertex(SHAPEMODEL& model, const SHAPEVERTEX& vertex) { model.verts.at(model.nverts++) = vertex; }

class BodyReader {
public:
    BodyReader(SHAPEMODEL& model, const PaintTable& paint, int first_vertex)
        : model_(model), paint_(paint), first_vertex_(first_vertex) {}

    void take(const SourceLine& line) {
        const std::string& word = line.field(0);
        if (word == "v")
            add_vertex(model_, {.x = line.real(1), .y = line.real(3), .z = line.real(2)});
        else if (word == "usemtl")
            material_ = find_paint(line);
        else if (word == "g")
            flags_ = line.field(1) == "two_sided" ? two_sided : std::uint8_t{0};
        else if (word == "f" || word == "l")
            add_primitive(line);
        else
            line.fail("unknown word");
    }

private:
    const std::array<std::uint16_t, paint_jobs>* find_paint(const SourceLine& line) const {
        const auto found = paint_.find(line.field(1));
        if (found == paint_.end()) line.fail("no paint of this name");
        return &found->second;
    }

    void add_primitive(const SourceLine& line) {
        const std::size_t corners = line.fields.size() - 1;
        if (!material_) line.fail("no usemtl before it");
        if (corners < 2 || corners > primitive_type::largest_polygon) line.fail("2 to 10 corners");
        SHAPEPRIM& primitive = model_.prims.at(model_.nprims++);
        primitive.type = static_cast<std::uint8_t>(corners);
        primitive.flags = flags_;
        primitive.cull1 = primitive.cull2 = always_shown;
        std::ranges::copy(*material_, primitive.material.begin());
        for (std::size_t i = 0; i < corners; ++i)
            primitive.vertex[i] = static_cast<std::uint16_t>(
                first_vertex_ + line.integer_within(i + 1, 1, model_.nverts - first_vertex_) - 1);
    }

    SHAPEMODEL& model_;
    const PaintTable& paint_;
    int first_vertex_;
    const std::array<std::uint16_t, paint_jobs>* material_ = nullptr;
    std::uint8_t flags_ = 0;
};

void read_body(const std::filesystem::path& file, const PaintTable& paint, SHAPEMODEL& model) {
    BodyReader reader(model, paint, model.nverts);
    for (const SourceLine& line : read_source_lines(file))
        reader.take(line);
}

void add_wheel(SHAPEMODEL& model, const SourceLine& line) {
    const auto wheel = static_cast<std::size_t>(line.integer_within(2, 0, car_layout::wheels - 1));
    make_wheel(model, wheel, line.real(3), line.real(4), line.real(5));
    resize_wheel(model, wheel, {line.real(6), line.real(7), line.real(8)});
}

SHAPEMODEL read_car_model(const std::filesystem::path& folder, int number, const PaintTable& paint) {
    const std::string name = "car" + std::to_string(number);
    SHAPEMODEL model;
    model.nverts = car_layout::first_body_vertex;
    model.nprims = car_layout::wheels;
    for (const SourceLine& line : read_source_lines(folder / "wheels.txt"))
        if (line.field(0) == name) add_wheel(model, line);
    read_body(folder / (name + ".obj"), paint, model);
    fit_bounding_box(model);
    return model;
}

} // namespace

void read_car(const std::filesystem::path& folder) {
    const PaintTable paint = read_paint(folder / "paint.txt");
    reset_car();
    PAINTJOBS = paint_jobs;
    for (int k = 0; k < 3; ++k)
        CAR[static_cast<std::size_t>(k)] = read_car_model(folder, k, paint);
    for (int k = 0; k < explosion_models; ++k)
        read_body(folder / ("exp" + std::to_string(k) + ".obj"), paint, CEXP[static_cast<std::size_t>(k)].edit());
    read_parameters(folder / "car.txt");
    if (!GENERATEINFO(true, true)) throw SourceError(folder.string() + ": car1 has no wheels");
}
