// The converter on all cores: a thousand cars into projects and back, by the clock on the wall; and TGA pictures of a
// cockpit into PNG against ImageMagick's mogrify, in turn in one run, each as one command for all pictures.
#include "alternate.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int cars = 1000;
constexpr int pictures = 300, rounds = 5;
constexpr double times_faster = 1.0;
const std::string garage = KAROSMIT_DATA_DIR "garage/";

double waiting_seconds(const std::string& command) {
    const auto begin = std::chrono::steady_clock::now();
    if (std::system(command.c_str()) != 0) {
        std::printf("This failed: %s\n", command.c_str());
        std::exit(1);
    }
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

double waiting_seconds_without(const fs::path& made, const std::string& command) {
    fs::remove_all(made);
    fs::create_directories(made);
    return waiting_seconds(command);
}

std::string number(int value) {
    const std::string digits = std::to_string(value);
    return std::string(3 - digits.size(), '0') + digits;
}

void make_cars() {
    fs::create_directory("cars");
    const std::vector<std::string> samples = {"brux", "tarn", "vela"};
    for (int i = 0; i < cars; ++i)
        for (const auto& [prefix, extension] :
             {std::pair{"car", ".res"}, {"st", ".3sh"}, {"stda", ".vsh"}, {"stdb", ".vsh"}})
            fs::copy_file(garage + prefix + samples[static_cast<std::size_t>(i) % samples.size()] + extension,
                          std::string("cars/") + prefix + "c" + number(i) + extension);
}

void report_rate(const char* what, double seconds) {
    std::printf("%s: %d cars in %.2f s, %.0f cars (%.0f files) a second\n", what, cars, seconds, cars / seconds,
                cars * 5 / seconds);
}

void measure_cars() {
    make_cars();
    report_rate("four files into projects", waiting_seconds_without("projects", KAROSMIT_CONVERTER
                                                                    " $(seq -f cars/c%03g 0 999) projects >/dev/null"));
    report_rate("projects into four files",
                waiting_seconds_without("back", KAROSMIT_CONVERTER " projects/*.car back >/dev/null"));
    waiting_seconds("diff -r cars back");
    report_rate("the same, one at a time",
                waiting_seconds_without("back", KAROSMIT_CONVERTER " --jobs 1 projects/*.car back >/dev/null"));
}

void make_pictures() {
    waiting_seconds(KAROSMIT_CONVERTER " " + garage + "stdabrux.vsh bitmaps/ >/dev/null");
    fs::remove("bitmaps/layout.txt");
    waiting_seconds(KAROSMIT_CONVERTER " bitmaps/*.png originals >/dev/null");
    fs::create_directory("pictures");
    std::vector<fs::path> originals(fs::directory_iterator("originals"), {});
    for (int i = 0; i < pictures; ++i)
        fs::copy_file(originals[static_cast<std::size_t>(i) % originals.size()], "pictures/" + number(i) + ".tga");
}

bool measure_pictures() {
    make_pictures();
    const std::string ours = KAROSMIT_CONVERTER " pictures/*.tga ours >/dev/null";
    // Without the option it leaves the rows as they stand in the file, from the bottom up.
    const std::string theirs = "mogrify -auto-orient -format png -path theirs pictures/*.tga";
    std::vector<double> our_times, their_times;
    for (int round = 0; round <= rounds; ++round) {
        const double mine = waiting_seconds_without("ours", ours);
        const double other = waiting_seconds_without("theirs", theirs);
        if (round == 0) continue; // both have been read from the disk then
        our_times.push_back(mine * 1000);
        their_times.push_back(other * 1000);
    }
    waiting_seconds("for i in ours/*; do compare -metric AE $i theirs/${i#ours/} null: 2>/dev/null || exit 1; done");
    const Comparison times = comparison_of(our_times, their_times);
    std::printf("%d pictures\n", pictures);
    print_times("TGA into PNG", "mogrify", times);
    return report("TGA into PNG", times.ratio, "mogrify", times_faster);
}

} // namespace

int main() {
    std::string folder = (fs::temp_directory_path() / "karosmit-bench-XXXXXX").string();
    if (!mkdtemp(folder.data())) return 1;
    fs::current_path(folder);
    measure_cars();
    const bool kept = measure_pictures();
    fs::current_path("/");
    fs::remove_all(folder);
    return kept ? 0 : 1;
}
