// Listing directories of 2,500 and of 10,000 files: what a file costs must not grow with their number.

#include "alternate.h"

#include "base/config.h"
#include "files/file_list.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

constexpr int few = 2500, many = 10000;
constexpr double most_growth = 1.5; // of the cost of one file, where a quadratic listing would show 4

class DirectoryOfFiles {
public:
    explicit DirectoryOfFiles(int files) {
        std::string pattern = (std::filesystem::temp_directory_path() / "karosmit-bench-XXXXXX").string();
        if (!::mkdtemp(pattern.data())) std::abort();
        path_ = pattern;
        // Names in an order of their own, so that nothing is sorted by luck.
        for (int i = 0; i < files; ++i)
            std::ofstream(path_ + "/car" + std::to_string(i * 7919L % 1000003 + 1000000) + ".res").put('x');
    }
    ~DirectoryOfFiles() { std::filesystem::remove_all(path_); }
    DirectoryOfFiles(const DirectoryOfFiles&) = delete;
    DirectoryOfFiles& operator=(const DirectoryOfFiles&) = delete;

    void list(const std::string& mode) const {
        change_directory(path_);
        UPDATEFILELIST(mode);
    }

private:
    std::string path_;
};

bool measure(const char* what, const std::string& mode, const DirectoryOfFiles& small, const DirectoryOfFiles& large) {
    const Comparison times = compare(
        15, [&] { small.list(mode); }, [&] { large.list(mode); });
    std::printf("%s: %d files %.2f ms, %d files %.2f ms\n", what, few, times.ours, many, times.theirs);
    return report_at_most(what, times.ratio * few / many, "x the cost of a file", most_growth);
}

} // namespace

int main() {
    const DirectoryOfFiles small(few), large(many);
    const bool files = measure("listing all files", "", small, large);
    const bool filtered = measure("listing by a filter", ".res.vsh.3sh.obj.", small, large);
    const bool cars = measure("listing cars by name", cars_mode, small, large);
    return files && filtered && cars ? 0 : 1;
}
