// Loading and saving a project at the tables' capacity, 6.8 million bytes, against reading and writing the same bytes
// as a file: processor time, in turn, in one run. What a project costs beside that is decoding and encoding its models
// and one copy of its pixels.
#include "alternate.h"
#include "base/file_io.h"
#include "base/file_status.h"
#include "formats/project_file.h"
#include "full_document.h"
#include "model/car.h"
#include "model/items.h"

#include <cstdio>
#include <filesystem>
#include <string>

namespace {
constexpr int rounds = 31;
constexpr double most_times_reading = 5;
constexpr double most_times_writing = 4;

bool succeeded(const char* what, const FileOutcome& outcome) {
    if (outcome.succeeded()) return true;
    std::printf("%s: %s\n", what, error_text(outcome.code).data());
    return false;
}

bool report_against(const char* what, const char* unit, const Comparison& measured, double limit) {
    std::printf("%s: %.2f ms, against %.2f ms\n", what, measured.ours, measured.theirs);
    return report_at_most(what, 1 / measured.ratio, unit, limit);
}
} // namespace

int main() {
    const auto folder = std::filesystem::temp_directory_path() / "karosmit-project-bench";
    std::filesystem::create_directories(folder);
    const std::string project = folder / "full.car", copy = folder / "copy";
    INITDASHITEMS();
    PAINTJOBS = max_paint_jobs;
    fill_document();
    bool kept = succeeded("saving", SAVECAR(project));
    const FileContent content = read_file(project);
    if (!kept || !content) return 1;
    std::printf("%zu bytes\n", content->size());

    const Comparison loading = compare(
        rounds, [&] { kept = succeeded("loading", LOADCAR(project)) && kept; },
        [&] { kept = read_file(project)->size() == content->size() && kept; });
    const Comparison saving = compare(
        rounds, [&] { kept = succeeded("saving", SAVECAR(project)) && kept; },
        [&] { kept = save_file(copy, *content) == SaveOutcome::saved && kept; });
    std::filesystem::remove_all(folder);

    kept = report_against("loading a full project", "x reading its bytes", loading, most_times_reading) && kept;
    kept = report_against("saving a full project", "x writing its bytes", saving, most_times_writing) && kept;
    return kept ? 0 : 1;
}
