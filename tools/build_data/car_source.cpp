#include "car_source.h"
#include "model/document.h"

#include "base/text.h"
#include "model/car.h"
#include "model/parameters.h"
#include "params/parameter_table.h"
#include "source.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr int first_body_vertex = 32;
constexpr int first_body_primitive = 4;
constexpr int wheels = 4;
constexpr int first_wheel_vertex = 8;
constexpr std::uint16_t tyre_material = 38;
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

// The six vertices of a wheel: centre, rim and tyre of the face with the smaller x, then of the other one.
void add_wheel(SHAPEMODEL& model, int wheel, const SourceLine& line) {
    const double x = line.real(3), y = line.real(4), z = line.real(5), width = line.real(6);
    const double smaller_x = x < 0 ? x - width : x;
    const int first = first_wheel_vertex + 6 * wheel;
    for (int face = 0; face < 2; ++face) {
        const double face_x = smaller_x + face * width;
        const auto at = [&](int i) -> SHAPEVERTEX& {
            return model.verts.at(static_cast<std::size_t>(first + 3 * face + i));
        };
        at(0) = {.x = face_x, .y = y, .z = z};
        at(1) = {.x = face_x, .y = y + line.real(7), .z = z};
        at(2) = {.x = face_x, .y = y, .z = z + line.real(8)};
    }
    SHAPEPRIM& primitive = model.prims.at(static_cast<std::size_t>(wheel));
    primitive.type = primitive_type::wheel;
    primitive.cull1 = primitive.cull2 = always_shown;
    primitive.material.fill(tyre_material);
    for (std::size_t i = 0; i < 6; ++i)
        primitive.vertex[i] = static_cast<std::uint16_t>(first + static_cast<int>(i));
}

void add_bounding_box(SHAPEMODEL& model) {
    double min_x = 0, max_x = 0, min_y = 0, max_y = 0, max_z = 0;
    for (std::size_t i = first_wheel_vertex; i < model.nverts; ++i) {
        const SHAPEVERTEX& v = model.verts[i];
        min_x = std::min(min_x, v.x);
        max_x = std::max(max_x, v.x);
        min_y = std::min(min_y, v.y);
        max_y = std::max(max_y, v.y);
        max_z = std::max(max_z, v.z);
    }
    for (std::size_t i = 0; i < first_wheel_vertex; ++i) {
        model.verts[i] = {.x = i % 2 == 0 ? min_x : max_x, .y = i / 2 % 2 == 0 ? max_y : min_y, .z = i < 4 ? 0 : max_z};
    }
}

SHAPEMODEL read_car_model(const std::filesystem::path& folder, int number, const PaintTable& paint) {
    const std::string name = "car" + std::to_string(number);
    SHAPEMODEL model;
    model.nverts = first_body_vertex;
    model.nprims = first_body_primitive;
    for (const SourceLine& line : read_source_lines(folder / "wheels.txt"))
        if (line.field(0) == name) add_wheel(model, static_cast<int>(line.integer(2)), line);
    read_body(folder / (name + ".obj"), paint, model);
    add_bounding_box(model);
    return model;
}

// --- dimensions in the parameters ----------------------------------------------------------------------------------

void set_rounded_word(int offset, double value) {
    set_par_word(offset, static_cast<std::uint16_t>(static_cast<std::int16_t>(std::lround(value))));
}

int wheel_across(int wheel) { return par_offset::wheels + 6 * wheel; }
int wheel_along(int wheel) { return wheel_across(wheel) + 4; }

// Collision half-width, height, half-length and radius, and the places of the wheels, from the in-game model.
void store_dimensions(const SHAPEMODEL& model) {
    double x = 0, y = 0, z = 0;
    for (std::size_t i = 0; i < model.nverts; ++i) {
        x = std::max(x, std::abs(model.verts[i].x));
        y = std::max(y, std::abs(model.verts[i].y));
        z = std::max(z, model.verts[i].z);
    }
    set_rounded_word(par_offset::collision_half_width, x / CARSCALE[1]);
    set_rounded_word(par_offset::collision_half_length, y / CARSCALE[1]);
    set_rounded_word(par_offset::collision_height, z / CARSCALE[1]);
    set_rounded_word(par_offset::collision_radius, std::sqrt(x * x + y * y + z * z) * 1.05 / CARSCALE[1]);
    for (int wheel = 0; wheel < 2; ++wheel) {
        const std::size_t first = static_cast<std::size_t>(first_wheel_vertex + 6 * wheel);
        const SHAPEVERTEX& near = model.verts[first];
        const SHAPEVERTEX& far = model.verts[first + 3];
        set_rounded_word(wheel_across(wheel), (near.x + far.x) / (2 * CARSCALE[3]));
        set_rounded_word(wheel_along(wheel), far.y / CARSCALE[3]);
    }
    // The front wheels mirror the rear ones: the third the second, the fourth the first.
    for (int wheel = 2; wheel < wheels; ++wheel) {
        set_par_word(wheel_across(wheel), par_word(wheel_across(wheels - 1 - wheel)));
        set_par_word(wheel_along(wheel), static_cast<std::uint16_t>(-par_word(wheel_along(wheels - 1 - wheel))));
    }
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
    store_dimensions(*CAR[1]);
}
