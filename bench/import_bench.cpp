// Importing a picture of the dashboard's size, like a photograph, against ImageMagick that brings the same PNG down to
// the same palette without dithering and writes it as a PNG: as whole commands, by the clock on the wall.
#include "alternate.h"
#include "image/picture_file.h"
#include "model/colours.h"
#include "pictures.h"

#include "base/config.h"
#include "formats/palette_file.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

constexpr int rounds = 15;
constexpr double times_faster = 2.0;

double waiting_milliseconds(const std::string& command) {
    const auto begin = std::chrono::steady_clock::now();
    if (std::system(command.c_str()) != 0) {
        std::printf("This failed: %s\n", command.c_str());
        std::exit(1);
    }
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

ImageHandle palette_picture() {
    ImageHandle image = create_image(256, 1, 0);
    for (int i = 0; i < 256; ++i)
        image->set_pixel(i, 0, PAL[static_cast<std::size_t>(i)] | 0xFF000000);
    return image;
}

std::string new_folder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "karosmit-bench-XXXXXX").string();
    return mkdtemp(pattern.data()) ? pattern : std::string();
}

// Of a pixel from its original, all channels together, on average.
double distance(const Image& a, const Image& b) {
    double sum = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            for (const int shift : {0, 8, 16})
                sum += std::abs(static_cast<int>(a.pixel(x, y) >> shift & 255) -
                                static_cast<int>(b.pixel(x, y) >> shift & 255));
    return sum / (a.width() * a.height());
}

} // namespace

int main() {
    const std::string folder = new_folder();
    if (folder.empty()) return 1;
    PROGDIR = KAROSMIT_DATA_DIR;
    LOADPALETTE();
    const ImageHandle photo = photograph(320, 200);
    if (SavePNGFile(*photo, folder + "/photo.png", false) != SaveOutcome::saved ||
        SavePNGFile(*palette_picture(), folder + "/palette.png", false) != SaveOutcome::saved)
        return 1;

    const std::string in_folder = "cd " + folder + " && ";
    const std::string ours = in_folder + IMPORT_PICTURE " " KAROSMIT_DATA_DIR " photo.png ours.png";
    const std::string theirs = in_folder + "convert photo.png +dither -remap palette.png theirs.png";
    std::vector<double> our_times, their_times;
    waiting_milliseconds(ours); // both have been read from the disk then
    waiting_milliseconds(theirs);
    for (int round = 0; round < rounds; ++round) {
        our_times.push_back(waiting_milliseconds(ours));
        their_times.push_back(waiting_milliseconds(theirs));
    }
    const ImageHandle mine = LoadRGBAFile(folder + "/ours.png"), other = LoadRGBAFile(folder + "/theirs.png");
    std::filesystem::remove_all(folder);
    if (!mine || !other) return 1;
    const Comparison times = comparison_of(our_times, their_times);
    print_times("whole import", "convert -remap", times);
    std::printf("a pixel from its original: %.2f, ImageMagick's %.2f\n", distance(*mine, *photo),
                distance(*other, *photo));
    return report("whole import", times.ratio, "convert -remap", times_faster) ? 0 : 1;
}
