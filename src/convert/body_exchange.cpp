#include "convert/body_exchange.h"

#include "base/decimal.h"
#include "convert/input.h"
#include "convert/refusal.h"
#include "formats/obj_file.h"
#include "formats/shape_file.h"
#include "model/car.h"
#include "model/colours.h"
#include "model/document.h"
#include "model/shape_parts.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <utility>

namespace {

const SHAPEMODEL& model_of(int slot) { return *CAR.at(static_cast<std::size_t>(slot)); }

// A channel as a fraction, as exact as three decimals are: enough to give the same byte back.
std::string fraction(std::uint32_t colour, int shift) {
    constexpr int digits = 4;
    return decimal_text(static_cast<double>(colour >> shift & 0xFF) / 255, digits);
}

std::string material_library(const std::set<std::uint16_t>& materials) {
    std::string text;
    for (const std::uint16_t material : materials) {
        const std::uint32_t colour = material < MATERIAL.size() ? MATERIAL[material].colour : 0;
        text += (text.empty() ? "newmtl " : "\nnewmtl ") + obj_material_name(material) + "\nKd " +
                fraction(colour, 16) + " " + fraction(colour, 8) + " " + fraction(colour, 0) + "\n";
    }
    return text;
}

std::set<std::uint16_t> materials_of(const SHAPEMODEL& model, std::size_t paint_job) {
    std::set<std::uint16_t> materials;
    for (const SHAPEPRIM& primitive : primitives_in_use(model))
        if (is_polygon(primitive)) materials.insert(primitive.material.at(paint_job));
    return materials;
}

Bytes bytes_of(const std::string& text) {
    ByteWriter writer;
    writer.text(text);
    return writer.take();
}

} // namespace

Output body_of_model(const std::string& path, int model, int paint_job) {
    if (std::ranges::all_of(MATERIAL, [](const MaterialColour& material) { return material.colour == 0; }))
        throw Refusal("the colours \"material.dat\" are not beside the program");
    if (paint_job > PAINTJOBS)
        throw Refusal("has " + std::to_string(PAINTJOBS) + " paint jobs, not " + std::to_string(paint_job));
    const auto job = static_cast<std::size_t>(paint_job - 1);
    const std::string library = path.substr(0, path.rfind('.')) + ".mtl";
    ObjExport body = export_obj(model_of(model), job, library.substr(library.rfind('/') + 1));
    if (body.polygons == 0) throw Refusal("the model \"" + slot_label(model) + "\" has no polygon");
    Output output{.files = {{path, std::move(body.file)},
                            {library, bytes_of(material_library(materials_of(model_of(model), job)))}}};
    if (body.left_out > 0)
        output.note = std::to_string(body.left_out) + " of its polygons left out: their vertices are not there";
    return output;
}

std::string body_into_model(const std::string& path, int model) {
    const BodyLoaded loaded = LOADOBJ(path, model);
    if (loaded.import)
        if (const std::string remarks = remarks_on(*loaded.import); !remarks.empty()) throw Refusal(remarks);
    require(loaded.outcome);
    return "into " + slot_label(model);
}
