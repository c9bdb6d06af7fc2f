#include "formats/project_file.h"

#include "base/byte_reader.h"
#include "base/file_io.h"
#include "formats/project_bitmaps.h"
#include "formats/project_model.h"
#include "model/bitmap_table.h"
#include "model/car.h"
#include "model/items.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>

namespace {
constexpr std::string_view magic = "*car";
constexpr std::string_view behind_magic = {"\r\n\x1A\0\1\0\0", 7};
constexpr std::size_t chunk_count_at = 11;
constexpr std::size_t id_length = 4;
constexpr std::size_t longest_text = std::numeric_limits<std::uint16_t>::max();

struct Chunk {
    std::string_view id;
    void (*read)(ByteReader& reader, ProjectFile& project);
    void (*write)(ByteWriter& writer, const ProjectFile& project);
};

void read_text(ByteReader& reader, std::string& text) {
    std::uint16_t length = 0;
    if (reader.u16(length)) text = reader.text(length);
}

void write_text(ByteWriter& writer, std::string_view text) {
    text = text.substr(0, longest_text);
    writer.u16(static_cast<std::uint16_t>(text.size()));
    writer.text(text);
}

void read_texts(ByteReader& reader, ProjectFile& project) {
    read_text(reader, project.name);
    read_text(reader, project.sign_name);
    read_text(reader, project.information);
}

void write_texts(ByteWriter& writer, const ProjectFile& project) {
    write_text(writer, project.name);
    write_text(writer, project.sign_name);
    write_text(writer, project.information);
    writer.u8(0);
}

void read_parameters(ByteReader& reader, ProjectFile& project) { reader.bytes(project.par); }
void write_parameters(ByteWriter& writer, const ProjectFile& project) {
    writer.bytes(std::span<const std::byte>(project.par));
}

void read_models(ByteReader& reader, ProjectFile& project) {
    reader.u8(project.paint_jobs);
    for (Shared<SHAPEMODEL>& model : project.models)
        if (read_project_model(reader, project.paint_jobs, model.edit())) project.cut = true;
}

void write_models(ByteWriter& writer, const ProjectFile& project) {
    const auto paint_jobs = std::min<std::uint8_t>(project.paint_jobs, max_paint_jobs);
    writer.u8(paint_jobs);
    for (const Shared<SHAPEMODEL>& model : project.models)
        write_project_model(writer, paint_jobs, *model);
}

void read_bitmaps(ByteReader& reader, ProjectFile& project) {
    ProjectBitmaps read = read_project_bitmaps(reader);
    project.bitmaps = std::move(read.bitmaps);
    if (read.cut) project.cut = true;
}

void write_bitmaps(ByteWriter& writer, const ProjectFile& project) { write_project_bitmaps(writer, project.bitmaps); }

constexpr Chunk chunks[] = {{"Base", read_texts, write_texts},
                            {"Pars", read_parameters, write_parameters},
                            {"Shps", read_models, write_models},
                            {"Dash", read_bitmaps, write_bitmaps}};

// ODDITY project-missing-chunk (kept): a chunk without an entry in the table is read from the start of the file.
//
// Offset of the data of a chunk; of two entries with its id that of the last one.
std::uint32_t find_chunk(ByteReader& reader, std::string_view id) {
    reader.seek(chunk_count_at);
    std::uint8_t count = 0;
    std::uint32_t found = 0;
    reader.u8(count);
    for (int i = 0; i < count; ++i) {
        const std::string entry = reader.text(id_length);
        std::uint32_t offset = 0;
        if (reader.u32(offset) && entry == id) found = offset;
    }
    return found;
}

bool texts_fit(const ProjectFile& project) {
    return std::max({project.name.size(), project.sign_name.size(), project.information.size()}) <= longest_text;
}

// Equal models stay the blocks that they are.
void keep_model(const Shared<SHAPEMODEL>& from, Shared<SHAPEMODEL>& to) {
    if (!(from == to)) to = from;
}
} // namespace

bool is_project_file(std::span<const std::byte> file) { return ByteReader(file).text(magic.size()) == magic; }

FileRemark decode_project_file(std::span<const std::byte> file, ProjectFile& project) {
    ByteReader reader(file);
    bool has_chunk = false;
    for (const Chunk& chunk : chunks) {
        const std::uint32_t offset = find_chunk(reader, chunk.id);
        has_chunk |= offset != 0;
        reader.seek(offset);
        chunk.read(reader, project);
    }
    return remark_on_content(has_chunk, reader.ran_out());
}

Bytes encode_project_file(const ProjectFile& project) {
    ByteWriter writer;
    writer.text(magic);
    writer.text(behind_magic);
    writer.u8(static_cast<std::uint8_t>(std::size(chunks)));
    const std::size_t table = writer.position();
    for (const Chunk& chunk : chunks) {
        writer.text(chunk.id);
        writer.u32(0);
    }
    std::size_t offset_at = table + id_length;
    for (const Chunk& chunk : chunks) {
        writer.u32_at(offset_at, static_cast<std::uint32_t>(writer.position()));
        offset_at += id_length + sizeof(std::uint32_t);
        chunk.write(writer, project);
    }
    return writer.take();
}

ProjectFile project_of(const CarDocument& car) {
    ProjectFile project;
    project.name = car.name;
    project.sign_name = car.sign_name;
    project.information = car.information;
    project.par = car.par;
    project.paint_jobs = car.paint_jobs;
    std::ranges::copy(car.models, project.models.begin());
    std::ranges::copy(car.explosions, project.models.begin() + car_slots);
    for (int i = 1; i <= car.bitmap_count; ++i)
        project.bitmaps.push_back(car.bitmaps[i]);
    return project;
}

ProjectFile project_of_tables() { return project_of(DOCUMENT); }

// ODDITY project-derives-nothing (kept): the title of the window, the Powergear class and the absolute positions of the
// bitmaps are not derived from what was loaded, as they are after the loading of a car's files. Only the items are
// bound anew, since they are places in the table that was replaced.
void keep_project(ProjectFile project) {
    CARNAME = std::move(project.name);
    CARSIGNNAME = std::move(project.sign_name);
    CARINFO = std::move(project.information);
    PAR = project.par;
    PAINTJOBS = project.paint_jobs;
    settle_paint_jobs();
    for (std::size_t i = 0; i < project_models; ++i)
        keep_model(project.models[i], i < car_slots ? CAR[i] : CEXP[i - car_slots]);
    while (BITMAPS > 0)
        drop_bitmap(BITMAPS);
    for (BitmapRecord& bitmap : project.bitmaps)
        BITMAP[++BITMAPS] = std::move(bitmap);
    UPDATEDASHITEMS();
}

FileOutcome LOADCAR(const std::string& filename) {
    auto [outcome, file] = load_and_report(filename);
    if (!file) return outcome;
    if (!is_project_file(*file)) return report_file({filename, file_status::unknown_format});
    ProjectFile project = project_of_tables();
    outcome.remark = decode_project_file(*file, project);
    if (project.cut) outcome.code = file_status::cut_to_fit;
    keep_project(std::move(project));
    return report_file(outcome);
}

FileOutcome SAVECAR(const std::string& filename) {
    const ProjectFile project = project_of_tables();
    return save_and_report(filename, {encode_project_file(project), !texts_fit(project)});
}
