#include "editor3d/views.h"

#include "base/reset.h"
#include "drawing/drawing.h"
#include "drawing/triangle.h"
#include "editor3d/view_ground.h"
#include "editor3d/view_mapping.h"
#include "editor3d/visual_model.h"
#include "editor3d/wireframe.h"
#include "model/car.h"
#include "model/colours.h"
#include "widgets/widgets.h"
#include "window/window.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>

OneBased<WINDOW3D, views> W3D;
double CURYAW = 0, CURPITCH = 0;

void INIT3DWINDOWS() {
    W3D[1] = {20, 50, 370, 300, 195, 175, 40.0, 255, "Top"};
    W3D[2] = {380, 50, 730, 300, 555, 275, 80.0, 255, "Front"};
    W3D[3] = {20, 315, 370, 565, 195, 540, 60.0, 255, "Side"};
    W3D[4] = {380, 315, 730, 565, 555, 440, 60.0, 255, "3D view"};
}

namespace {

void reset_views() {
    for (WINDOW3D& view : W3D)
        view = {};
    CURYAW = CURPITCH = 0;
}
const ResetWithProgram registered(reset_views);

static_assert(triangle_last_column == screen_width - 1 && triangle_last_row == screen_height - 1);

constexpr int origin_radius = 2;

const SHAPEMODEL& shown_model() { return *shown_slot(); }

ViewMapping mapping_of(const WINDOW3D& view) {
    return {static_cast<double>(view.origin_x), static_cast<double>(view.origin_y), view.zoom};
}

// The inside of a view's frame, below its caption.
Rectangle inside_of(const WINDOW3D& view) { return {view.left + 2, view.top + 8, view.right - 2, view.bottom - 2}; }

void draw_empty(Canvas& canvas, const ViewMapping& mapping) {
    const Rectangle& inside = canvas.clip();
    fill_box(canvas, inside.x1, inside.y1, inside.x2, inside.y2, colour::background);
    draw_circle(canvas, mapping.origin_x, mapping.origin_y, origin_radius, ground_colour::origin);
}

void draw_plane(Canvas& canvas, Plane plane, const ViewMapping& mapping) {
    draw_grid(canvas, mapping);
    draw_physical_data(canvas, plane, mapping);
    WFCAR = shown_model();
    turn_onto_plane(WFCAR, plane);
    draw_wireframe(canvas, WFCAR, plane, mapping);
}

// Where a vertex lies on the screen. One that is not in front of the eye, or is nowhere, has no pixel.
struct SolidVertex {
    std::int16_t x = 0, y = 0;
    bool visible = false;
};

std::int16_t nearest_corner_pixel(double coordinate) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::lrint(std::clamp<double>(coordinate, Limits::min(), Limits::max())));
}

SolidVertex solid_vertex(const VISUALVERTEX& vertex, const ViewMapping& mapping) {
    const double x = mapping.x(vertex.x), y = mapping.y(vertex.z);
    if (!in_front_of_eye(vertex) || std::isnan(x) || std::isnan(y)) return {};
    return {nearest_corner_pixel(x), nearest_corner_pixel(y), true};
}

// The pieces of VCAR on the screen.
class SolidModel {
public:
    SolidModel(Canvas& canvas, const ViewMapping& mapping) : canvas_(canvas), mapping_(mapping) {
        for (std::size_t i = 0; i < VCAR.nverts; ++i)
            vertices_[i] = solid_vertex(VCAR.verts[i], mapping);
    }

    void draw(const VISUALPRIM& piece) const {
        const std::uint32_t colour = MATERIAL[piece.material & 0xFF].colour;
        const auto [a, b, c] = piece.corner;
        if (piece.type == primitive_type::triangle)
            draw_triangle(vertex(a), vertex(b), vertex(c), colour);
        else if (piece.type == primitive_type::line && vertex(a).visible && vertex(b).visible)
            draw_line(canvas_, exact_x(a), exact_y(a), exact_x(b), exact_y(b), colour);
    }

private:
    void draw_triangle(const SolidVertex& a, const SolidVertex& b, const SolidVertex& c, std::uint32_t colour) const {
        if (a.visible && b.visible && c.visible) DRAWTRIANGLE(canvas_, a.x, a.y, b.x, b.y, c.x, c.y, colour);
    }

    const SolidVertex& vertex(std::int16_t corner) const { return vertices_[static_cast<std::size_t>(corner)]; }
    double exact_x(std::int16_t corner) const { return mapping_.x(VCAR.verts[static_cast<std::size_t>(corner)].x); }
    double exact_y(std::int16_t corner) const { return mapping_.y(VCAR.verts[static_cast<std::size_t>(corner)].z); }

    Canvas& canvas_;
    const ViewMapping& mapping_;
    std::array<SolidVertex, std::tuple_size_v<decltype(VCAR.verts)>> vertices_;
};

void draw_solid_model(Canvas& canvas, const ViewMapping& mapping) {
    SIMPLIFYMODEL(static_cast<std::uint8_t>(CURMODEL), CURPJ);
    ROTATEVISUALMODEL(255, CURYAW, CURPITCH);
    SORTVISUALPRIMITIVES();
    const SolidModel model(canvas, mapping);
    for (const VISUALPRIM& piece : std::span(VCAR.tris).first(VCAR.ntris))
        model.draw(piece);
}

} // namespace

void UPDATE3DWINDOW(std::uint8_t view) {
    const ViewMapping mapping = mapping_of(W3D[view]);
    const ClipGuard clip(screen(), inside_of(W3D[view]));
    draw_empty(screen(), mapping);
    if (view == view_3d)
        draw_solid_model(screen(), mapping);
    else
        draw_plane(screen(), static_cast<Plane>(view - 1), mapping);
}
