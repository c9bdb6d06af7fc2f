// The document at the tables' capacity: copying it, comparing it and putting it back, as a history does in every pass
// of a screen. Compared with copying the bytes that it holds, in the same run; the limits are in microseconds, far from
// what a noisy machine adds.
#include "alternate.h"
#include "full_document.h"

#include <benchmark/benchmark.h>

#include <cstring>

namespace {

constexpr int rounds = 31;
constexpr int repetitions = 200;

// The bytes that a document without shared blocks would hold.
struct WholeCopy {
    std::vector<SHAPEMODEL> models{car_slots + explosion_models};
    std::vector<Pixels> pixels{max_bitmaps, Pixels(max_bitmap_pixels / max_bitmaps)};

    void take() {
        for (std::size_t k = 0; k < models.size(); ++k)
            models[k] = k < CAR.size() ? *CAR[k] : *CEXP[k - CAR.size()];
        for (std::size_t k = 0; k < pixels.size(); ++k)
            std::memcpy(pixels[k].data(), BITMAP[static_cast<long>(k) + 1].pixels->data(), pixels[k].size());
    }
};

double microseconds(double milliseconds) { return milliseconds * 1000 / repetitions; }

bool measure(const char* what, double limit, auto&& work) {
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round)
        times.push_back(milliseconds_of([&] {
            for (int i = 0; i < repetitions; ++i)
                work();
        }));
    std::printf("%s: fastest %.2f microseconds\n", what, microseconds(std::ranges::min(times)));
    return report_at_most(what, microseconds(median(times)), "microseconds, median", limit);
}

bool shares_all_pixels(const CarDocument& copy) {
    for (long i = 1; i <= max_bitmaps; ++i)
        if (!copy.bitmaps[i].pixels.is(BITMAP[i].pixels)) return false;
    return true;
}

} // namespace

int main() {
    fill_document();
    CarDocument copy;
    bool kept = measure("copying the document", 20, [&] {
        copy = DOCUMENT;
        benchmark::DoNotOptimize(&copy);
    });
    kept &= measure("comparing it with an unchanged copy", 50, [&] {
        const bool same = copy == DOCUMENT;
        benchmark::DoNotOptimize(same);
    });
    int turn = 0;
    kept &= measure("changing one vertex, and comparing", 50, [&] {
        copy = DOCUMENT;
        CAR[4].edit().verts[511].z = ++turn;
        const bool same = copy == DOCUMENT;
        benchmark::DoNotOptimize(same);
    });
    kept &= measure("putting it back", 20, [&] {
        DOCUMENT = copy;
        benchmark::DoNotOptimize(&DOCUMENT);
    });
    if (!shares_all_pixels(copy)) {
        std::printf("pixels that did not change were copied\n");
        return 1;
    }

    WholeCopy whole;
    const Comparison copies = compare(
        rounds, [&] { copy = DOCUMENT; }, [&] { whole.take(); });
    kept &= report("copying the document", copies.ratio, "faster than copying its bytes", 50);
    return kept ? 0 : 1;
}
