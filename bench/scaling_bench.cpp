// Smooth scaling of the picture into a window of 1.25 times its size: the part that one typed character changes, and
// all of it; against copying as many pixels of the window.
#include "alternate.h"
#include "pictures.h"
#include "window/scaling.h"

#include <benchmark/benchmark.h>

namespace {

constexpr Size picture{960, 648}, window{1200, 810};

bool measure(const char* what, const Rectangle& changed, int repetitions, double most_microseconds) {
    const auto image = artwork(picture.width, picture.height);
    const Scaler scaler(place_picture(picture, window));
    const Rectangle area = window_area(scaler.placement(), changed);
    const auto pitch = static_cast<std::size_t>(window.width);
    std::vector<std::uint32_t> pixels(pitch * static_cast<std::size_t>(window.height)), copy(pixels.size());
    const auto length = static_cast<std::size_t>(area.x2 - area.x1 + 1);
    const Comparison times = compare(
        21,
        [&] {
            for (int i = 0; i < repetitions; ++i) {
                scaler.draw(*image, area, pixels, pitch);
                benchmark::DoNotOptimize(pixels.data());
            }
        },
        [&] {
            for (int i = 0; i < repetitions; ++i) {
                for (int y = area.y1; y <= area.y2; ++y) {
                    const std::size_t start = static_cast<std::size_t>(y) * pitch + static_cast<std::size_t>(area.x1);
                    std::copy_n(&pixels[start], length, &copy[start]);
                }
                benchmark::DoNotOptimize(copy.data());
            }
        });
    std::printf("%s: median %.2f us, fastest %.2f; copying: median %.2f us, fastest %.2f\n", what,
                times.our_median / repetitions * 1000, times.ours / repetitions * 1000,
                times.their_median / repetitions * 1000, times.theirs / repetitions * 1000);
    return report_at_most(what, times.our_median / repetitions * 1000, "microseconds", most_microseconds);
}

} // namespace

int main() {
    bool kept = measure("smooth scaling, one character", {480, 320, 487, 335}, 1000, 8);
    kept &= measure("smooth scaling, the whole picture", {0, 0, 959, 647}, 5, 8000);
    return kept ? 0 : 1;
}
