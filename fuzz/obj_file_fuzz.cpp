// Any text as OBJ: read as a second, literal reader reads it, and what was read is written and read as the same
// polygons.
#include "expect.h"
#include "literal_reader.h"

#include "base/byte_reader.h"
#include "base/decimal.h"
#include "formats/obj_file.h"
#include "model/shape_parts.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace {

using Words = std::vector<std::string>;

// The words of a line between blanks. The first is empty when the line begins with one.
Words words_of(std::string line) {
    if (line.find('#') != std::string::npos) line.erase(line.find('#'));
    Words words(1);
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] != ' ')
            words.back() += line[i];
        else if (i + 1 < line.size() && line[i + 1] != ' ')
            words.emplace_back();
    }
    return words;
}

bool all_digits(const std::string& text) {
    return std::ranges::all_of(text, [](unsigned char c) { return std::isdigit(c) != 0; });
}

bool is_signed(const std::string& text) { return !text.empty() && (text[0] == '+' || text[0] == '-'); }

// Whether the whole text is a decimal number.
bool is_decimal(std::string text) {
    if (is_signed(text)) text.erase(0, 1);
    if (const std::size_t e = text.find_first_of("eE"); e != std::string::npos) {
        std::string exponent = text.substr(e + 1);
        if (is_signed(exponent)) exponent.erase(0, 1);
        if (exponent.empty() || !all_digits(exponent)) return false;
        text.erase(e);
    }
    if (const std::size_t point = text.find('.'); point != std::string::npos) text.erase(point, 1);
    return !text.empty() && all_digits(text);
}

// The number that the longest start of the word is.
double decimal_in(const std::string& word) {
    const std::string start = word.substr(0, word.find_first_not_of("0123456789.eE+-"));
    for (std::size_t length = start.size(); length > 0; --length)
        if (is_decimal(start.substr(0, length))) return std::strtod(start.substr(0, length).c_str(), nullptr);
    // Nothing, with its sign.
    return word.starts_with('-') ? -0.0 : 0.0;
}

struct Face {
    std::vector<long> corners;
    std::uint16_t material = 200;
    bool cut = false;
};

struct LiteralObj {
    std::vector<SHAPEVERTEX> vertices;
    std::vector<Face> faces;
};

std::string in_small_letters(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::uint16_t material_of(const Words& words) {
    const std::string name = words.size() < 2 ? "" : in_small_letters(words[1]);
    // A blank may stand before the number.
    const auto number_behind = [&](std::size_t length) {
        if (name.size() > length) return integer_in(name.substr(length));
        return words.size() > 2 ? integer_in(words[2]) : 0;
    };
    if (name.starts_with("vortag")) return static_cast<std::uint16_t>(number_behind(6));
    if (name.starts_with("base")) return static_cast<std::uint16_t>(number_behind(4) + 200);
    return 200;
}

LiteralObj read_literally(const std::string& text) {
    LiteralObj obj;
    std::uint16_t material = 200;
    for (const std::string& line : lines_of(text)) {
        Words words = words_of(line);
        const std::string keyword = in_small_letters(words[0]);
        if (keyword == "usemtl") material = material_of(words);
        words.resize(std::max<std::size_t>(words.size(), 4));
        if (keyword == "v") obj.vertices.push_back({decimal_in(words[1]), decimal_in(words[3]), decimal_in(words[2])});
        if (keyword == "f" && !words[1].empty()) {
            obj.faces.push_back({{}, material});
            for (std::size_t i = 1; i < words.size() && i <= 10 && !words[i].empty(); ++i)
                obj.faces.back().corners.push_back(integer_in(words[i]));
            obj.faces.back().cut = words.size() > 11;
        }
    }
    return obj;
}

void check_face(const SHAPEPRIM& primitive, const Face& face) {
    expect(primitive.type == face.corners.size(), "as many corners");
    expect(primitive.material[0] == face.material && primitive.material[2] == face.material, "the same material");
    expect(primitive.flags == 1, "seen from both sides");
    for (std::size_t i = 0; i < face.corners.size(); ++i) {
        const long index = face.corners[i] + 31;
        expect(primitive.vertex[i] == (index < 0 || index > 65535 ? 65535 : index), "the same corners");
    }
}

void check_remarks(const ObjImport& import, const LiteralObj& obj, std::size_t faces) {
    const auto vertices = static_cast<long>(import.vertices);
    std::size_t cut = 0, below_one = 0, without_vertices = 0;
    for (std::size_t i = 0; i < faces; ++i) {
        if (obj.faces[i].cut) ++cut;
        below_one +=
            static_cast<std::size_t>(std::ranges::count_if(obj.faces[i].corners, [](long n) { return n < 1; }));
        if (std::ranges::any_of(obj.faces[i].corners, [&](long n) { return n < -31 || n > vertices; }))
            ++without_vertices;
    }
    expect(import.faces_cut == cut && import.numbers_below_one == below_one, "what was cut and what is below 1");
    expect(import.faces_without_vertices == without_vertices, "what names no vertex");
    expect(!input_is_good || remarks_on(import).empty(), "a good file deserves no remark");
}

void check_as_literal(const SHAPEMODEL& model, const ObjImport& import, const LiteralObj& obj) {
    const std::size_t vertices = std::min<std::size_t>(obj.vertices.size(), 480);
    const std::size_t faces = std::min<std::size_t>(obj.faces.size(), 508);
    expect(model.nverts == 32 + vertices && model.nprims == 4 + faces, "the counts");
    expect(import.vertices + import.vertices_left_out == obj.vertices.size(), "every vertex is counted");
    expect(import.faces + import.faces_left_out == obj.faces.size(), "every face is counted");
    expect(import.vertices == vertices && import.faces == faces, "what was taken");
    check_remarks(import, obj, faces);
    for (std::size_t i = 0; i < vertices; ++i)
        expect(model.verts[32 + i] == obj.vertices[i], "the same vertices");
    for (std::size_t i = 0; i < faces; ++i)
        check_face(model.prims[4 + i], obj.faces[i]);
}

void check_box(const SHAPEMODEL& model) {
    for (const SHAPEVERTEX& vertex : vertices_in_use(model))
        expect(!(vertex.x < model.verts[0].x) && !(vertex.x > model.verts[7].x) && !(vertex.z > model.verts[7].z),
               "the box holds everything");
}

// The polygons of a model as the texts of their corners.
std::vector<std::string> polygons_of(const SHAPEMODEL& model) {
    std::vector<std::string> all;
    for (const SHAPEPRIM& primitive : primitives_in_use(model)) {
        if (!is_polygon(primitive) || !has_its_vertices(model, primitive)) continue;
        all.emplace_back();
        for (const std::uint16_t index : corners_of(primitive)) {
            const SHAPEVERTEX& vertex = model.verts[index];
            for (const double coordinate : {vertex.x, vertex.y, vertex.z})
                all.back() += decimal_text(coordinate) + " ";
        }
    }
    return all;
}

bool near_the_largest(const SHAPEMODEL& model) {
    return std::ranges::any_of(vertices_in_use(model), [](const SHAPEVERTEX& vertex) {
        return std::max({std::abs(vertex.x), std::abs(vertex.y), std::abs(vertex.z)}) > 1e308;
    });
}

void check_round_trip(const SHAPEMODEL& model) {
    // Written with sixteen digits the largest numbers are none any more, and infinities are read as 0.
    if (near_the_largest(model)) return;
    const ObjExport out = export_obj(model, 0);
    SHAPEMODEL again;
    const ObjImport import = import_obj(ByteReader(out.file).text_view(), 3, again);
    expect(import.faces == out.polygons && import.vertices_left_out + import.faces_left_out == 0, "all comes back");
    expect(polygons_of(again) == polygons_of(model), "the same polygons");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = ByteReader(input_bytes(data, size)).text(size);
    const auto model = std::make_unique<SHAPEMODEL>();
    const ObjImport import = import_obj(text, 3, *model);
    check_as_literal(*model, import, read_literally(text));
    check_box(*model);
    check_round_trip(*model);
    return 0;
}
