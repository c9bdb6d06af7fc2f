// Redraws of the 3D editor's views with a model that fills the tables: the shaded view against the same triangles
// through SDL's software renderer and against filling the view's rectangle once, and all four views. Both draw the same
// triangles; with their outlines the view sets half as many pixels again as SDL does.
#include "alternate.h"
#include "editor3d/views.h"
#include "editor3d/visual_model.h"
#include "model/car.h"
#include "model/colours.h"
#include "model/parameters.h"
#include "widgets/widgets.h"
#include "window/window.h"

#include <SDL.h>
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <numbers>
#include <span>
#include <vector>

namespace {

constexpr double times_faster = 2.0;
constexpr double all_views_limit = 4.0; // milliseconds
constexpr int rounds = 31;

constexpr int rings = 23, corners_per_ring = 22; // 22 x 22 squares, and a lid

std::uint16_t ring_vertex(int ring, int corner) {
    return static_cast<std::uint16_t>(ring * corners_per_ring + corner % corners_per_ring);
}

// A body of the size of a car, longer than high, whose faces look outwards.
void make_vertices(SHAPEMODEL& model) {
    for (int ring = 0; ring < rings; ++ring) {
        const double along = static_cast<double>(ring) / (rings - 1) * std::numbers::pi;
        for (int corner = 0; corner < corners_per_ring; ++corner) {
            const double around = static_cast<double>(corner) / corners_per_ring * 2 * std::numbers::pi;
            const double radius = std::sin(along);
            model.verts[model.nverts++] = {0.9 * radius * std::cos(around), 2.0 * std::cos(along),
                                           0.7 + 0.7 * radius * std::sin(around)};
        }
    }
}

void add_face(SHAPEMODEL& model, std::span<const std::uint16_t> corners, std::uint8_t flags) {
    if (model.nprims == shape_capacity) return;
    SHAPEPRIM& prim = model.prims[model.nprims];
    prim.type = static_cast<std::uint8_t>(corners.size());
    std::ranges::copy(corners, prim.vertex.begin());
    prim.material.fill(static_cast<std::uint16_t>(model.nprims % 200));
    prim.flags = flags;
    ++model.nprims;
}

// 512 primitives: the four wheels, and as many squares as there is room for. With `flags` 1 all of them show.
void make_model(SHAPEMODEL& model, std::uint8_t flags) {
    model = {};
    make_vertices(model);
    model.nprims = 4;
    while (model.nprims < shape_capacity)
        for (int ring = 0; ring + 1 < rings; ++ring)
            for (int corner = 0; corner < corners_per_ring; ++corner)
                add_face(model,
                         std::array{ring_vertex(ring, corner), ring_vertex(ring + 1, corner),
                                    ring_vertex(ring + 1, corner + 1), ring_vertex(ring, corner + 1)},
                         flags);
}

void make_colours() {
    for (std::size_t i = 0; i < MATERIAL.size(); ++i)
        MATERIAL[i].colour = 0xFF000000U | static_cast<std::uint32_t>(i * 0x010307);
}

// What the last redraw of the shaded view drew, for the other renderer.
std::vector<SDL_Vertex> drawn_triangles() {
    const WINDOW3D& view = W3D[view_3d];
    std::vector<SDL_Vertex> corners;
    for (const VISUALPRIM& piece : std::span(VCAR.tris).first(VCAR.ntris))
        for (const std::int16_t corner : piece.corner) {
            const VISUALVERTEX& vertex = VCAR.verts[static_cast<std::size_t>(corner)];
            const std::uint32_t colour = MATERIAL[piece.material & 0xFF].colour;
            const auto channel = [&](int shift) { return static_cast<Uint8>(colour >> shift); };
            corners.push_back({{static_cast<float>(std::nearbyint(view.origin_x + vertex.x * view.zoom)),
                                static_cast<float>(std::nearbyint(view.origin_y - vertex.z * view.zoom))},
                               {channel(16), channel(8), channel(0), 255},
                               {0, 0}});
        }
    return corners;
}

// SDL's renderer on a surface of the screen's size, cut at the view's frame.
class SoftwareRenderer {
public:
    SoftwareRenderer()
        : surface_(SDL_CreateRGBSurfaceWithFormat(0, screen_width, screen_height, 32, SDL_PIXELFORMAT_ARGB8888)),
          renderer_(SDL_CreateSoftwareRenderer(surface_)) {
        const WINDOW3D& view = W3D[view_3d];
        inside_ = {view.left + 2, view.top + 8, view.right - view.left - 3, view.bottom - view.top - 9};
        SDL_RenderSetClipRect(renderer_, &inside_);
    }
    ~SoftwareRenderer() {
        SDL_DestroyRenderer(renderer_);
        SDL_FreeSurface(surface_);
    }
    SoftwareRenderer(const SoftwareRenderer&) = delete;
    SoftwareRenderer& operator=(const SoftwareRenderer&) = delete;

    void draw(const std::vector<SDL_Vertex>& corners) {
        SDL_SetRenderDrawColor(renderer_, 0x32, 0x14, 0x1E, 0xFF);
        SDL_RenderFillRect(renderer_, &inside_);
        SDL_RenderGeometry(renderer_, nullptr, corners.data(), static_cast<int>(corners.size()), nullptr, 0);
        SDL_RenderFlush(renderer_);
        benchmark::DoNotOptimize(surface_->pixels);
    }
    std::uint32_t pixel(int x, int y) const {
        std::uint32_t value = 0;
        std::memcpy(&value, static_cast<const char*>(surface_->pixels) + y * surface_->pitch + x * 4, sizeof value);
        return value;
    }

private:
    SDL_Surface* surface_;
    SDL_Renderer* renderer_;
    SDL_Rect inside_{};
};

void redraw(std::uint8_t view) {
    UPDATE3DWINDOW(view);
    benchmark::DoNotOptimize(screen().image().bytes().data());
    screen().take_damage();
}

void fill_view() {
    const WINDOW3D& view = W3D[view_3d];
    fill_box(screen(), view.left + 2, view.top + 8, view.right - 2, view.bottom - 2, colour::background);
    benchmark::DoNotOptimize(screen().image().bytes().data());
    screen().take_damage();
}

// How many of the view's pixels both renderers gave the same colour, of all of them.
double agreement(const SoftwareRenderer& other) {
    const WINDOW3D& view = W3D[view_3d];
    int alike = 0, all = 0;
    for (int y = view.top + 8; y <= view.bottom - 2; ++y)
        for (int x = view.left + 2; x <= view.right - 2; ++x) {
            ++all;
            alike += screen().image().pixel(x, y) == other.pixel(x, y);
        }
    return static_cast<double>(alike) / all;
}

bool measure_shaded_view(const char* what, double limit) {
    redraw(view_3d);
    const auto corners = drawn_triangles();
    SoftwareRenderer other;
    other.draw(corners);
    std::printf("%s: %zu triangles, %.0f %% of the pixels as SDL draws them\n", what, corners.size() / 3,
                agreement(other) * 100);
    const auto times = compare(
        rounds, [] { redraw(view_3d); }, [&] { other.draw(corners); });
    const auto fill = compare(
        rounds, [] { redraw(view_3d); }, fill_view);
    std::printf("%s: redraw %.3f ms, SDL %.3f ms, %.1f times a fill of the rectangle (%.3f ms)\n", what, times.ours,
                times.theirs, 1 / fill.ratio, fill.theirs);
    return report(what, times.ratio, "SDL_RenderGeometry", limit);
}

bool measure_all_views() {
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round)
        times.push_back(milliseconds_of([] {
            for (std::uint8_t view = 1; view <= views; ++view)
                redraw(view);
        }));
    return report_at_most("all four views", median(times), "ms", all_views_limit);
}

} // namespace

int main() {
    INIT3DWINDOWS();
    make_colours();
    CURYAW = 0.6;
    CURPITCH = 0.3;
    CURMODEL = 0;
    set_par_word(par_offset::collision_half_width, 22);
    set_par_word(par_offset::collision_height, 30);
    set_par_word(par_offset::collision_half_length, 50);
    set_par_word(par_offset::collision_radius, 60);

    make_model(CAR[0].edit(), 0);
    bool kept = measure_shaded_view("closed body", times_faster);
    make_model(CAR[0].edit(), 1);
    kept &= measure_shaded_view("every face double-sided", times_faster);
    W3D[view_3d].zoom = 400;
    kept &= measure_shaded_view("double-sided, seen close", times_faster);
    W3D[view_3d].zoom = 60;
    kept &= measure_all_views();
    return kept ? 0 : 1;
}
