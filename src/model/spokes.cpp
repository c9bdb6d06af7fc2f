#include "model/spokes.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

struct HalfAxes {
    double across, along;
};

HalfAxes half_axes(double radius, double eccentricity) {
    if (eccentricity < 1) return {radius, eccentricity * radius};
    return {radius / eccentricity, radius};
}

std::int16_t rounded(double value) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp(std::nearbyint(value), double{Limits::min()}, double{Limits::max()}));
}

void store(SpokePoint& point, double x, double y) {
    if (!std::isnan(x) && !std::isnan(y)) point = {rounded(x), rounded(y)};
}

bool has_passed(double angle, double target, double step) { return step >= 0 ? target < angle : angle < target; }

} // namespace

// ODDITY last-spoke-dropped (kept): the angle is a sum of steps, and a last point whose sum overshoots the target by a
// rounding error is dropped.
int GENERATESPOKES(std::span<SpokePoint> points, int n, SpokeCentre centre, int direction, double radius, double start,
                   double end, double eccentricity) {
    if (n < 1) return 0;
    const double first = direction < 0 ? end : start;
    const double target = direction < 0 ? start : end;
    const double step = (target - first) / n;
    const HalfAxes axes = half_axes(radius, eccentricity);
    const int room = static_cast<int>(std::min<std::size_t>(points.size(), static_cast<std::size_t>(n) + 1));
    double angle = first;
    for (int i = 0; i < room; ++i, angle += step) {
        if (has_passed(angle, target, step)) return i;
        store(points[static_cast<std::size_t>(i)], centre.x + std::cos(angle) * axes.across,
              centre.y - std::sin(angle) * axes.along);
    }
    return room;
}
