// Listing a directory of 10,000 files against no more than reading that directory and the heads of the files that are
// shown; and against a directory of 2,500, because what a file costs must not grow with their number.
#include "alternate.h"

#include "base/config.h"
#include "files/file_list.h"
#include "formats/parameter_file.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>

namespace {

constexpr int rounds = 31;
constexpr int few = 2500, many = 10000;
constexpr double most_growth = 1.5; // of the cost of one file, where a quadratic listing would show 4
constexpr double most_times_reading = 1.5;
constexpr std::size_t shown_files = max_listed_files - 1; // beside ".."
constexpr std::size_t head_length = 4096;

Bytes small_car() {
    ParameterFile car;
    car.name = "A car to list";
    return encode_parameter_file(car);
}

class DirectoryOfFiles {
public:
    explicit DirectoryOfFiles(int files) {
        std::string pattern = (std::filesystem::temp_directory_path() / "karosmit-bench-XXXXXX").string();
        if (!::mkdtemp(pattern.data())) std::abort();
        path_ = pattern;
        const Bytes car = small_car();
        // Names in an order of their own, so that nothing is sorted by luck.
        for (int i = 0; i < files; ++i) {
            names_.push_back("car" + std::to_string(i * 7919L % 1000003 + 1000000) + ".res");
            std::ofstream(path_ + "/" + names_.back(), std::ios::binary)
                .write(reinterpret_cast<const char*>(car.data()), static_cast<std::streamsize>(car.size()));
        }
        std::ranges::sort(names_);
        change_directory(path_);
    }
    ~DirectoryOfFiles() { std::filesystem::remove_all(path_); }
    DirectoryOfFiles(const DirectoryOfFiles&) = delete;
    DirectoryOfFiles& operator=(const DirectoryOfFiles&) = delete;

    void list(const std::string& mode) const {
        change_directory(path_);
        UPDATEFILELIST(mode);
    }

    // The names, and of the first files by name the first bytes.
    void only_read(std::size_t heads) const {
        change_directory(path_);
        DIR* const directory = ::opendir(".");
        while (const dirent* entry = ::readdir(directory))
            benchmark::DoNotOptimize(entry->d_name[0]);
        ::closedir(directory);
        char head[head_length];
        for (std::size_t i = 0; i < heads; ++i) {
            const int file = ::open(names_[i].c_str(), O_RDONLY | O_CLOEXEC);
            benchmark::DoNotOptimize(::read(file, head, sizeof head));
            ::close(file);
        }
    }

private:
    std::string path_;
    std::vector<std::string> names_;
};

bool measure(const std::string& what, const std::string& mode, const DirectoryOfFiles& small,
             const DirectoryOfFiles& large) {
    const std::size_t heads = mode == cars_mode ? shown_files : 0;
    const Comparison reading = compare(
        rounds, [&] { large.list(mode); }, [&] { large.only_read(heads); });
    print_times(what.c_str(), "reading directory and heads", reading);
    bool kept = report_at_most(what.c_str(), 1 / reading.ratio, "x reading directory and heads", most_times_reading);
    if (heads != 0) return kept; // of the files past the list's end only the names are read
    const Comparison growth = compare(
        rounds, [&] { small.list(mode); }, [&] { large.list(mode); });
    print_times((what + ", 2500 files").c_str(), "10000 files", growth);
    kept &= report_at_most(what.c_str(), growth.ratio * few / many, "x the cost of a file", most_growth);
    return kept;
}

} // namespace

int main() {
    const DirectoryOfFiles small(few), large(many);
    bool kept = measure("listing all files", "", small, large);
    kept &= measure("listing by a filter", ".res.vsh.3sh.obj.", small, large);
    kept &= measure("listing cars by name", cars_mode, small, large);
    return kept ? 0 : 1;
}
