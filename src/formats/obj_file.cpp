#include "formats/obj_file.h"

#include "base/byte_reader.h"
#include "base/decimal.h"
#include "base/file_io.h"
#include "base/text.h"
#include "model/body.h"
#include "model/car.h"
#include "model/shape_parts.h"
#include "model/wheels.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace {
constexpr std::uint16_t first_base_material = 200;
constexpr int base_materials = 4;
constexpr std::string_view base_name = "base";
constexpr std::string_view number_name = "vortag";

constexpr std::uint32_t always_shown = 0xFFFFFFFF;
constexpr std::uint8_t two_sided = 1;

constexpr long first_number_of_file = 1;
constexpr long past_all_vertices = std::numeric_limits<std::uint16_t>::max();

// What follows the next run of blanks.
std::string_view behind_blank(std::string_view text) {
    return without_leading_blanks(text.substr(std::min(text.find(' '), text.size())));
}

std::string_view without_comment(std::string_view line) {
    return without_trailing_blanks(line.substr(0, line.find('#')));
}

// ODDITY obj-base-names-shift (kept): the names of the base materials are read as one more than they are written, so
// that a body that goes out and comes back has them shifted by one.
std::uint16_t material_named(std::string_view name) {
    const std::string lower = lower_case(name);
    long number = first_base_material;
    if (lower.starts_with(number_name)) number = leading_integer(name.substr(number_name.size()));
    if (lower.starts_with(base_name)) number += leading_integer(name.substr(base_name.size()));
    return static_cast<std::uint16_t>(number & 0xFFFF);
}

std::uint16_t vertex_index(long number) {
    const long index = number - first_number_of_file + static_cast<long>(car_layout::first_body_vertex);
    return static_cast<std::uint16_t>(index < 0 || index > past_all_vertices ? past_all_vertices : index);
}

// Puts what the lines of a text say behind the wheels of a model.
class BodyReader {
public:
    BodyReader(SHAPEMODEL& model, std::size_t paint_jobs)
        : model_(model), paint_jobs_(std::min<std::size_t>(paint_jobs, max_paint_jobs)) {}

    void take(std::string_view line) {
        line = without_comment(line);
        const std::string keyword = lower_case(line.substr(0, line.find(' ')));
        const std::string_view rest = behind_blank(line);
        if (keyword == "v") add_vertex(rest);
        if (keyword == "f") add_face(rest);
        if (keyword == "usemtl") material_ = material_named(rest);
    }

    ObjImport done() {
        for (const SHAPEPRIM& face : body_primitives(std::as_const(model_)))
            if (!has_its_vertices(model_, face)) ++import_.faces_without_vertices;
        return import_;
    }

private:
    void add_vertex(std::string_view numbers) {
        if (model_.nverts == shape_capacity) {
            ++import_.vertices_left_out;
            return;
        }
        SHAPEVERTEX& vertex = model_.verts[model_.nverts++];
        ++import_.vertices;
        for (double* coordinate : {&vertex.x, &vertex.z, &vertex.y}) {
            *coordinate = leading_decimal(numbers);
            numbers = behind_blank(numbers);
        }
    }

    void add_face(std::string_view numbers) {
        if (numbers.empty()) return;
        if (model_.nprims == shape_capacity) {
            ++import_.faces_left_out;
            return;
        }
        SHAPEPRIM& face = model_.prims[model_.nprims++];
        ++import_.faces;
        face.type = take_corners(numbers, face);
        face.cull1 = face.cull2 = always_shown;
        face.flags = two_sided;
        face.mark = 0;
        std::fill_n(face.material.begin(), paint_jobs_, material_);
    }

    // Returns how many there are.
    std::uint8_t take_corners(std::string_view numbers, SHAPEPRIM& face) {
        std::uint8_t corners = 0;
        for (; !numbers.empty() && corners < primitive_type::largest_polygon; numbers = behind_blank(numbers)) {
            const long number = leading_integer(numbers);
            if (number < first_number_of_file) ++import_.numbers_below_one;
            face.vertex[corners++] = vertex_index(number);
        }
        if (!numbers.empty()) ++import_.faces_cut;
        return corners;
    }

    SHAPEMODEL& model_;
    std::size_t paint_jobs_;
    std::uint16_t material_ = first_base_material;
    ObjImport import_;
};

void keep_only_wheels(SHAPEMODEL& model) {
    model.nprims = car_layout::wheels;
    model.nverts = car_layout::first_body_vertex;
    const auto is_wheel = [](const SHAPEPRIM& primitive) { return primitive.type == primitive_type::wheel; };
    if (!std::ranges::all_of(primitives_in_use(model), is_wheel)) generate_wheels(model);
}

bool is_exported(const SHAPEMODEL& model, const SHAPEPRIM& primitive) {
    return is_polygon(primitive) && has_its_vertices(model, primitive);
}

// The number of each vertex in the file, 0 for those that no exported polygon uses.
std::vector<int> numbers_in_file(const SHAPEMODEL& model) {
    std::vector<int> numbers(vertices_in_use(model).size());
    for (const SHAPEPRIM& primitive : primitives_in_use(model))
        if (is_exported(model, primitive))
            for (const std::uint16_t index : corners_of(primitive))
                numbers[index] = 1;
    int last = 0;
    for (int& number : numbers)
        if (number != 0) number = ++last;
    return numbers;
}

void write_polygon(ByteWriter& writer, const SHAPEPRIM& polygon, std::size_t paint_job,
                   const std::vector<int>& numbers) {
    writer.text("usemtl " + obj_material_name(polygon.material.at(paint_job)) + "\nf");
    for (const std::uint16_t index : corners_of(polygon))
        writer.text(" " + std::to_string(numbers[index]));
    writer.text("\n");
}

// "3 faces" or "1 face", with what is said of them.
std::string counted(std::size_t count, const std::string& one, const std::string& many, const std::string& said) {
    return std::to_string(count) + " " + (count == 1 ? one : many) + " " + said;
}
} // namespace

std::string remarks_on(const ObjImport& import) {
    std::string remarks;
    const auto add = [&](bool holds, const std::string& remark) {
        if (holds) remarks += (remarks.empty() ? "" : "; ") + remark;
    };
    const std::string at_most = std::to_string(shape_capacity);
    add(import.faces == 0, "no face");
    add(import.vertices_left_out > 0,
        at_most + " vertices at most: " + std::to_string(import.vertices_left_out) + " left out");
    add(import.faces_left_out > 0,
        at_most + " primitives at most: " + std::to_string(import.faces_left_out) + " left out");
    add(import.faces_cut > 0, counted(import.faces_cut, "face", "faces", "cut to 10 corners"));
    add(import.numbers_below_one > 0, counted(import.numbers_below_one, "vertex number", "vertex numbers", "below 1"));
    add(import.faces_without_vertices > 0,
        counted(import.faces_without_vertices, "face", "faces", "of vertices that are not there"));
    return remarks;
}

ObjImport import_obj(std::string_view text, std::size_t paint_jobs, SHAPEMODEL& model) {
    keep_only_wheels(model);
    BodyReader reader(model, paint_jobs);
    std::string_view line;
    while (next_line(text, line))
        reader.take(line);
    fit_bounding_box(model);
    return reader.done();
}

std::string obj_material_name(std::uint16_t material) {
    const int base = material - first_base_material;
    if (base >= 0 && base < base_materials) return "base" + std::to_string(base + 1);
    return "Vortag" + std::to_string(material);
}

ObjExport export_obj(const SHAPEMODEL& model, std::size_t paint_job, const std::string& library) {
    const std::vector<int> numbers = numbers_in_file(model);
    ByteWriter writer;
    writer.text("mtllib " + library + "\n");
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const SHAPEVERTEX& vertex = model.verts[i];
        if (numbers[i] != 0)
            writer.text("v " + decimal_text(vertex.x) + " " + decimal_text(vertex.z) + " " + decimal_text(vertex.y) +
                        "\n");
    }
    ObjExport result;
    for (const SHAPEPRIM& primitive : primitives_in_use(model)) {
        if (!is_polygon(primitive)) continue;
        const bool exported = has_its_vertices(model, primitive);
        if (exported) write_polygon(writer, primitive, paint_job, numbers);
        ++(exported ? result.polygons : result.left_out);
    }
    result.file = writer.take();
    return result;
}

BodyLoaded LOADOBJ(const std::string& filename, int slot) {
    auto [outcome, file] = load_and_report(filename);
    if (!file) return {outcome};
    const ObjImport import =
        import_obj(ByteReader(*file).text_view(), PAINTJOBS, CAR.at(static_cast<std::size_t>(slot)).edit());
    if (import.vertices_left_out + import.faces_left_out > 0) outcome.code = file_status::cut_to_fit;
    return {report_file(outcome), import};
}

BodySaved SAVEOBJ(const std::string& filename, int slot) {
    const ObjExport result = export_obj(*CAR.at(static_cast<std::size_t>(slot)), CURPJ);
    return {save_and_report(filename, {result.file}), result.left_out};
}
