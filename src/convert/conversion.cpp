#include "convert/conversion.h"

#include "base/byte_reader.h"
#include "base/file_io.h"
#include "base/text.h"
#include "convert/bitmap_layout.h"
#include "convert/body_exchange.h"
#include "convert/car_set.h"
#include "convert/file_kinds.h"
#include "convert/input.h"
#include "convert/output.h"
#include "convert/parameter_text.h"
#include "convert/picture_exchange.h"
#include "convert/refusal.h"
#include "formats/bitmap_file.h"
#include "formats/resource_archive.h"
#include "formats/shape_file.h"
#include "image/picture_file.h"
#include "model/check_car.h"
#include "model/colours.h"
#include "model/document.h"
#include "model/new_car.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <utility>

namespace {

struct Job {
    const std::string& source;
    const std::string& target;
    const ConvertOptions& options;
};

constexpr const char* laid_out_anew = "comes back with other bytes";

// --- a whole car ----------------------------------------------------------------------------------------------------

Output car_files_to_project(const Job& job) {
    std::string changed;
    for (const std::string& file : load_car_files(job.source))
        changed += (changed.empty() ? "" : ", ") + file;
    return {.files = {project_file_of_tables(job.target)},
            .note = changed.empty() ? "" : changed + " " + laid_out_anew};
}

Output project_to_car_files(const Job& job) {
    load_project(job.source);
    return {.files = car_files_of_tables(job.target)};
}

// --- bitmaps --------------------------------------------------------------------------------------------------------

void require_palette() {
    if (std::ranges::all_of(PAL, [](std::uint32_t colour) { return colour == 0; }))
        throw Refusal("the palette \"vortag.col\" is not beside the program");
}

Bytes bitmap_file_of(const std::vector<BitmapRecord>& bitmaps) {
    std::vector<ArchiveResource> resources;
    for (const BitmapRecord& bitmap : bitmaps)
        resources.push_back({bitmap.name, encode_bitmap(bitmap)});
    return encode_archive(resources);
}

Bytes picture_content(const std::string& path) { return required_content(path, largest_picture_file); }

Output bitmaps_to_folder(const Job& job) {
    require_palette();
    require(LOADVSH(job.source));
    const Bytes file = required_content(job.source);
    const BitmapFile content = decode_bitmap_file(file);
    Output output{.files = bitmap_folder(content.bitmaps)};
    for (NamedFile& one : output.files)
        one.name = job.target + one.name;
    if (bitmap_file_of(content.bitmaps) != file) output.note = laid_out_anew;
    return output;
}

Output folder_to_bitmaps(const Job& job) {
    require_palette();
    const Bytes layout = required_content(job.source + std::string(layout_file_name));
    try {
        const auto bitmaps = read_bitmap_folder(ByteReader(layout).text_view(), [&](const std::string& name) {
            return picture_content(job.source + name);
        });
        return {.files = {{job.target, bitmap_file_of(bitmaps)}}};
    } catch (const Refusal& why) {
        throw Refusal(job.source + ": " + why.what());
    }
}

// --- parameters -----------------------------------------------------------------------------------------------------

ParameterFile new_parameters() {
    new_car();
    return {PAR, CARNAME, CARSIGNNAME, CARINFO};
}

Output parameters_to_text(const Job& job) {
    require(LOADRES(job.source));
    const ParameterFile car{PAR, CARNAME, CARSIGNNAME, CARINFO};
    ByteWriter text;
    text.text(parameter_text(car));
    const bool same = encode_parameter_file(car) == required_content(job.source);
    return {.files = {{job.target, text.take()}}, .note = same ? "" : laid_out_anew};
}

Output text_to_parameters(const Job& job) {
    const Bytes text = required_content(job.source);
    ParameterFile car = new_parameters();
    read_parameter_text(ByteReader(text).text_view(), car);
    return {.files = {{job.target, encode_parameter_file(car)}}};
}

// --- models and pictures --------------------------------------------------------------------------------------------

void load_models_of_shapes(const std::string& path, const ConvertOptions& options) {
    constexpr int models = 3;
    if (options.model >= models) throw Refusal("a .3sh has the models 0 to 2");
    require(LOAD3SH(path, all_shapes));
}

void load_models_of_project(const std::string& path, const ConvertOptions& /*options*/) { load_project(path); }

using LoadModels = void (*)(const std::string& path, const ConvertOptions& options);

template <LoadModels load>
Output model_to_body(const Job& job) {
    load(job.source, job.options);
    return body_of_model(job.target, job.options.model, job.options.paint_job);
}

template <LoadModels load, NamedFile (*encode)(const std::string& path)>
Output body_to_model(const Job& job) {
    if (!file_exists(job.target))
        throw Refusal(job.target + " is not there: a body goes into a model of a file that is");
    load(job.target, job.options);
    std::string note = body_into_model(job.source, job.options.model);
    return {.files = {encode(job.target)}, .note = std::move(note)};
}

Output picture_to_picture(const Job& job) {
    const ImageHandle image = decode_whole_picture(job.source, picture_content(job.source));
    return {.files = {{job.target, encode_picture(job.target, *image)}}};
}

// --- the pairs ------------------------------------------------------------------------------------------------------

struct Pair {
    FileKind from, to;
    Output (*make)(const Job& job);
};
constexpr Pair pairs[] = {
    {FileKind::car_files, FileKind::project, car_files_to_project},
    {FileKind::project, FileKind::car_files, project_to_car_files},
    {FileKind::bitmaps, FileKind::folder, bitmaps_to_folder},
    {FileKind::folder, FileKind::bitmaps, folder_to_bitmaps},
    {FileKind::shapes, FileKind::body, model_to_body<load_models_of_shapes>},
    {FileKind::project, FileKind::body, model_to_body<load_models_of_project>},
    {FileKind::body, FileKind::shapes, body_to_model<load_models_of_shapes, shape_file_of_tables>},
    {FileKind::body, FileKind::project, body_to_model<load_models_of_project, project_file_of_tables>},
    {FileKind::parameters, FileKind::text, parameters_to_text},
    {FileKind::text, FileKind::parameters, text_to_parameters},
    {FileKind::targa, FileKind::png, picture_to_picture},
    {FileKind::targa, FileKind::bmp, picture_to_picture},
    {FileKind::png, FileKind::targa, picture_to_picture},
    {FileKind::png, FileKind::bmp, picture_to_picture},
    {FileKind::bmp, FileKind::targa, picture_to_picture},
    {FileKind::bmp, FileKind::png, picture_to_picture},
};

// What a source of this kind can become, for a person.
std::string targets_of(FileKind from) {
    std::string targets;
    for (const Pair& pair : pairs)
        if (pair.from == from) targets += (targets.empty() ? "" : ", ") + std::string(in_words(pair.to));
    return targets;
}

const Pair& pair_for(const std::string& source, const std::string& target) {
    const FileKind from = kind_of(source), to = kind_of(target);
    if (from == FileKind::unknown) throw Refusal("not a kind of file that can be converted");
    for (const Pair& pair : pairs)
        if (pair.from == from && pair.to == to) return pair;
    throw Refusal(std::string(in_words(from)) + " does not become " + std::string(in_words(to)) + " but " +
                  targets_of(from));
}

std::string_view in_words(Severity severity) {
    switch (severity) {
    case Severity::serious: return "serious";
    case Severity::doubtful: return "doubtful";
    default: return "forgotten";
    }
}

void load_car(const std::string& source) {
    switch (kind_of(source)) {
    case FileKind::car_files: load_car_files(source); break;
    case FileKind::project: load_project(source); break;
    default: throw Refusal("a check is of a car's four files or its project");
    }
}

// The outcome of work on a source; whatever refuses, the line begins with the source.
ConvertOutcome outcome_of(const std::string& source, auto&& work) {
    try {
        return work();
    } catch (const Refusal& why) {
        const std::string reason = why.what();
        return {.text = reason.starts_with(source) ? reason : source + ": " + reason};
    } catch (const std::bad_alloc&) {
        return {.text = source + ": no room in memory"};
    }
}

} // namespace

ConvertOutcome convert(const std::string& source, const std::string& target, const ConvertOptions& options) {
    return outcome_of(source, [&]() -> ConvertOutcome {
        const Pair& pair = pair_for(source, target);
        begin_car();
        const Output output = pair.make({source, target, options});
        write_output(output, options.force);
        const std::string note = output.note.empty() ? "" : " (" + output.note + ")";
        return {.done = true, .text = source + " -> " + target + note};
    });
}

ConvertOutcome check(const std::string& source) {
    return outcome_of(source, [&]() -> ConvertOutcome {
        begin_car();
        load_car(source);
        const Findings findings = check_car(DOCUMENT);
        if (findings.empty()) return {.done = true, .text = source + ": nothing found"};
        std::string text;
        for (const Finding& finding : findings)
            text += (text.empty() ? "" : "\n") + source + ": " + std::string(in_words(finding.severity)) + ": " +
                    finding.where + ": " + finding.what + "; " + finding.remedy;
        return {.done = serious_findings(findings) == 0, .text = text};
    });
}
