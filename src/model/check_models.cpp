#include "model/check_parts.h"

#include "model/car.h"
#include "model/polygon_shape.h"
#include "model/shape_parts.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

constexpr std::size_t file_limit = 255; // counts are bytes in the game's file
constexpr std::uint16_t largest_material = 255;
constexpr int saved_slots = 3; // the auxiliary ones stay in the project
constexpr int game_slot = 1;

// A corner off by less than two units of the file, or by less than a thirtieth of the face, comes of rounding, or is
// not seen.
constexpr double tolerated_units = 2, tolerated_part = 1.0 / 30;
constexpr double least_area_units = 0.01; // square units of the file

struct Checked {
    const SHAPEMODEL& model;
    std::string name;
    double scale;
    int slot; // where it is mended
};

double on_grid(double coordinate, double unit) { return std::nearbyint(coordinate / unit) * unit; }

// The model as its file will hold it: on a grid of whole units.
std::unique_ptr<SHAPEMODEL> as_in_the_file(const SHAPEMODEL& model, double unit) {
    auto rounded = std::make_unique<SHAPEMODEL>(model);
    for (SHAPEVERTEX& vertex : rounded->verts)
        vertex = {on_grid(vertex.x, unit), on_grid(vertex.y, unit), on_grid(vertex.z, unit), vertex.mark};
    return rounded;
}

class ModelCheck {
public:
    ModelCheck(const Checked& checked, Findings& findings) : at_(checked), findings_(findings) {}

    void counts() {
        too_many(at_.model.nverts, "vertices");
        too_many(at_.model.nprims, "primitives");
    }
    void primitives(std::size_t paint_jobs) {
        const auto lacks = [&](const SHAPEPRIM& p) { return !has_its_vertices(at_.model, p); };
        report(Severity::serious, count(lacks), "primitive uses a vertex that is not there",
               "primitives use vertices that are not there", "export it as OBJ, mend it, load it again");
        const auto unknown = [](const SHAPEPRIM& p) { return p.type > primitive_type::wheel; };
        report(Severity::serious, count(unknown), "primitive of an unknown kind", "primitives of unknown kinds",
               "export the body as OBJ and load it again: they are left out");
        const auto large = [&](const SHAPEPRIM& p) {
            return std::ranges::any_of(p.material.begin(), p.material.begin() + static_cast<std::ptrdiff_t>(paint_jobs),
                                       [](std::uint16_t material) { return material > largest_material; });
        };
        report(Severity::serious, count(large), "primitive with a material above 255",
               "primitives with materials above 255", "recolour the paint jobs: Enter over the 3D view");
    }
    void coordinates() {
        const auto vertices = vertices_in_use(at_.model);
        const auto out = [&](const SHAPEVERTEX& v) { return beyond(v.x) || beyond(v.y) || beyond(v.z); };
        report(Severity::serious, static_cast<std::size_t>(std::ranges::count_if(vertices, out)),
               "vertex too far out for the file", "vertices too far out for the file", "make the model smaller");
    }
    void faces() {
        std::size_t flattened = 0, bent = 0, hollow = 0;
        const auto rounded = as_in_the_file(at_.model, at_.scale);
        for (const SHAPEPRIM& primitive : primitives_in_use(at_.model)) {
            if (!is_polygon(primitive) || !has_its_vertices(at_.model, primitive)) continue;
            const PolygonShape shape = polygon_shape(*rounded, primitive);
            const double tolerated = std::max(tolerated_units * at_.scale, tolerated_part * shape.extent);
            if (!(shape.area > least_area_units * at_.scale * at_.scale))
                ++flattened;
            else if (shape.off_plane > tolerated)
                ++bent;
            else if (shape.inward > tolerated)
                ++hollow;
        }
        const char* const mend = "mend it in a modelling tool, by way of OBJ";
        report(Severity::doubtful, flattened, "face without an area", "faces without an area", mend);
        report(Severity::doubtful, bent, "face that is not flat", "faces that are not flat", mend);
        report(Severity::doubtful, hollow, "face that is not convex", "faces that are not convex", mend);
    }
    void wheels() {
        const std::size_t wheels = count([](const SHAPEPRIM& p) { return p.type == primitive_type::wheel; });
        if (wheels >= car_layout::wheels) return;
        add(Severity::doubtful, wheels == 0 ? "No wheels" : "Only " + counted(wheels, "wheel", "wheels"),
            "Ctrl+W makes four");
    }
    void box() {
        const auto vertices = vertices_in_use(at_.model);
        if (vertices.size() <= car_layout::first_body_vertex) return;
        const auto box = vertices.first(car_layout::box_vertices);
        const auto body = vertices.subspan(car_layout::first_body_vertex);
        const auto out = [&](const SHAPEVERTEX& v) {
            return outside(box, &SHAPEVERTEX::x, v) || outside(box, &SHAPEVERTEX::y, v) ||
                   outside(box, &SHAPEVERTEX::z, v);
        };
        report(Severity::doubtful, static_cast<std::size_t>(std::ranges::count_if(body, out)),
               "vertex outside the bounding box", "vertices outside the bounding box",
               "export it as OBJ and load it again: the box is fitted");
    }
    void emptiness() {
        add(at_.slot == game_slot ? Severity::serious : Severity::doubtful, "The model is empty",
            "load a body (OBJ), or copy one here: Ctrl+C, Ctrl+V");
    }

private:
    std::size_t count(auto&& wanted) const {
        return static_cast<std::size_t>(std::ranges::count_if(primitives_in_use(at_.model), wanted));
    }
    bool beyond(double coordinate) const {
        const double units = std::nearbyint(coordinate / at_.scale);
        return !(units >= -32768 && units <= 32767);
    }
    bool outside(std::span<const SHAPEVERTEX> box, double SHAPEVERTEX::*axis, const SHAPEVERTEX& vertex) const {
        const auto [least, greatest] = std::ranges::minmax(box, {}, axis);
        const double half_a_unit = at_.scale / 2;
        return vertex.*axis < least.*axis - half_a_unit || vertex.*axis > greatest.*axis + half_a_unit;
    }
    void too_many(std::size_t count, const std::string& what) {
        if (count <= file_limit) return;
        add(Severity::serious, std::to_string(count) + " " + what + ", the file has room for 255",
            "take parts away: export it as OBJ, load it again");
    }
    void report(Severity severity, std::size_t count, std::string_view one, std::string_view several,
                const char* remedy) {
        if (count > 0) add(severity, counted(count, one, several), remedy);
    }
    void add(Severity severity, std::string what, const char* remedy) {
        findings_.push_back({severity, at_.name, std::move(what), remedy, {CheckSpot::model, at_.slot}});
    }

    const Checked& at_;
    Findings& findings_;
};

void check_any_model(const Checked& checked, const CarDocument& car, ModelCheck& check) {
    check.counts();
    check.primitives(std::min<std::size_t>(car.paint_jobs, checked.model.prims[0].material.size()));
    check.coordinates();
    check.faces();
}

void check_slot(const CarDocument& car, int slot, Findings& findings) {
    const auto index = static_cast<std::size_t>(slot);
    const Checked checked{*car.models[index], slot_label(slot), CARSCALE[index], slot};
    ModelCheck check(checked, findings);
    if (checked.model.nprims == 0) return check.emptiness();
    check_any_model(checked, car, check);
    check.wheels();
    check.box();
}

void check_explosions(const CarDocument& car, Findings& findings) {
    std::size_t empty = 0;
    for (std::size_t k = 0; k < car.explosions.size(); ++k) {
        const Checked checked{*car.explosions[k], "Explosion " + std::to_string(k + 1), CARSCALE[game_slot], game_slot};
        ModelCheck check(checked, findings);
        check_any_model(checked, car, check);
        empty += checked.model.nprims == 0 ? 1 : 0;
    }
    if (empty == 0) return;
    findings.push_back({Severity::doubtful,
                        "Explosion",
                        counted(empty, "of 4 models is empty", "of 4 models are empty"),
                        "Ctrl+D makes them from the Game model",
                        {CheckSpot::model, game_slot}});
}

} // namespace

void check_models(const CarDocument& car, Findings& findings) {
    for (int slot = 0; slot < saved_slots; ++slot)
        check_slot(car, slot, findings);
    check_explosions(car, findings);
}

namespace {

bool same_in_all_jobs(const SHAPEPRIM& primitive, std::size_t jobs) {
    return std::ranges::all_of(std::span(primitive.material).first(jobs),
                               [&](std::uint16_t material) { return material == primitive.material[0]; });
}

// A paint job that was added holds no material for the explosion models, which read it as 0.
bool lacks_a_material(const SHAPEPRIM& primitive, std::size_t jobs) {
    const auto used = std::span(primitive.material).first(jobs);
    return std::ranges::count(used, 0) != 0 && !same_in_all_jobs(primitive, jobs);
}

} // namespace

void check_paint_jobs(const CarDocument& car, Findings& findings) {
    const std::size_t jobs = std::min<std::size_t>(car.paint_jobs, max_paint_jobs);
    const auto alike = [&](const Shared<SHAPEMODEL>& model) {
        return std::ranges::all_of(primitives_in_use(*model), [&](const auto& p) { return same_in_all_jobs(p, jobs); });
    };
    const bool has_body = !body_primitives(*car.models[game_slot]).empty();
    if (jobs > 1 && has_body && std::all_of(car.models.begin(), car.models.begin() + saved_slots, alike))
        findings.push_back({Severity::forgotten,
                            "Paint jobs",
                            "All " + std::to_string(jobs) + " are alike",
                            "P shows the next one, Enter over the 3D view recolours it",
                            {CheckSpot::model, game_slot}});
    std::size_t bare = 0;
    for (const Shared<SHAPEMODEL>& piece : car.explosions)
        bare +=
            std::ranges::any_of(primitives_in_use(*piece), [&](const auto& p) { return lacks_a_material(p, jobs); });
    if (bare == 0) return;
    findings.push_back({Severity::forgotten,
                        "Explosion",
                        counted(bare, "piece has", "pieces have") + " no material for a paint job that was added",
                        "press Ctrl+D",
                        {CheckSpot::model, game_slot}});
}
