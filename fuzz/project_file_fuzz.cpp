// Any bytes as a project: read as a second, literal reader reads them, held within the tables, and written and read as
// the same.
#include "expect.h"
#include "literal_reader.h"

#include "formats/project_file.h"
#include "model/bitmap_table.h"
#include "model/items.h"
#include "model/shape_parts.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

// Returns whether the table has the chunk.
bool go_to(LiteralReader& reader, const std::string& chunk) {
    std::map<std::string, std::size_t> offsets;
    reader.go_to(11);
    std::uint64_t chunks = 0;
    reader.number(1, chunks);
    for (std::uint64_t i = 0; i < chunks; ++i) {
        const std::string id = reader.text(4);
        std::uint64_t offset = 0;
        if (reader.number(4, offset)) offsets[id] = offset;
    }
    reader.go_to(offsets[chunk]);
    return offsets[chunk] != 0;
}

// Each returns whether its chunk is there; one that is not is read from the start of the file.
bool read_texts(LiteralReader& reader, ProjectFile& project) {
    const bool there = go_to(reader, "Base");
    for (std::string* text : {&project.name, &project.sign_name, &project.information}) {
        std::uint64_t length = 0;
        if (reader.number(2, length)) *text = reader.text(length);
    }
    return there;
}

bool read_parameters(LiteralReader& reader, ProjectFile& project) {
    const bool there = go_to(reader, "Pars");
    const std::string bytes = reader.text(776);
    std::memcpy(project.par.data(), bytes.data(), bytes.size());
    return there;
}

void read_vertex(LiteralReader& reader, SHAPEVERTEX& vertex) {
    if (reader.number(8, vertex.x)) vertex.mark = 0;
    reader.number(8, vertex.y);
    reader.number(8, vertex.z);
}

// Returns whether there are materials without room.
bool read_primitive(LiteralReader& reader, int jobs, SHAPEPRIM& primitive) {
    reader.number(1, primitive.type);
    reader.number(4, primitive.cull1);
    reader.number(4, primitive.cull2);
    reader.number(1, primitive.flags);
    std::uint16_t no_room = 0;
    bool cut = false;
    for (int job = 0; job < jobs; ++job) {
        cut |= job == 17 && !reader.at_end();
        reader.number(2, job < 17 ? primitive.material[static_cast<std::size_t>(job)] : no_room);
    }
    const int type = primitive.type;
    const int corners = type <= 10 ? type : type == 11 ? 2 : type == 12 ? 6 : 0;
    for (int corner = 0; corner < corners; ++corner)
        reader.number(2, primitive.vertex[static_cast<std::size_t>(corner)]);
    return cut;
}

bool read_models(LiteralReader& reader, ProjectFile& project) {
    const bool there = go_to(reader, "Shps");
    reader.number(1, project.paint_jobs);
    for (auto& shared : project.models) {
        SHAPEMODEL& model = shared.edit();
        std::uint64_t count = model.nverts;
        reader.number(2, count);
        model.nverts = static_cast<std::uint16_t>(std::min<std::uint64_t>(count, 512));
        for (std::uint64_t i = 0; i < count && (i < 512 || !reader.at_end()); ++i) {
            SHAPEVERTEX no_room;
            project.cut |= i >= 512;
            read_vertex(reader, i < 512 ? model.verts[i] : no_room);
        }
        count = model.nprims;
        reader.number(2, count);
        model.nprims = static_cast<std::uint16_t>(std::min<std::uint64_t>(count, 512));
        for (std::uint64_t i = 0; i < count && (i < 512 || !reader.at_end()); ++i) {
            SHAPEPRIM no_room;
            project.cut |= i >= 512;
            const bool cut = read_primitive(reader, project.paint_jobs, i < 512 ? model.prims[i] : no_room);
            project.cut |= cut && i < 512;
        }
    }
    return there;
}

bool read_bitmap(LiteralReader& reader, std::size_t& room, ProjectFile& project) {
    BitmapRecord bitmap;
    bitmap.name = reader.text(4);
    if (bitmap.name.size() < 4) return false;
    reader.number(2, bitmap.width);
    reader.number(2, bitmap.height);
    reader.number(2, bitmap.header_word_3);
    reader.number(2, bitmap.header_word_4);
    reader.number(2, bitmap.relative_x);
    reader.number(2, bitmap.relative_y);
    reader.number(2, bitmap.absolute_x);
    reader.number(2, bitmap.absolute_y);
    const std::string flags = reader.text(4);
    std::memcpy(bitmap.flags.data(), flags.data(), flags.size());
    reader.number(1, bitmap.is_mask);
    reader.number(1, bitmap.has_mask);
    bitmap.mask_name = reader.text(4);
    bitmap.mask_name.resize(4, ' ');
    const std::size_t area = std::size_t{bitmap.width} * bitmap.height;
    if (project.bitmaps.size() == 100 || area > room) {
        project.cut = true;
        reader.pass(area);
        return true;
    }
    room -= area;
    const std::string bytes = reader.text(area);
    Pixels pixels(bytes.begin(), bytes.end());
    pixels.resize(area);
    bitmap.pixels = std::move(pixels);
    project.bitmaps.push_back(std::move(bitmap));
    return true;
}

bool read_bitmaps(LiteralReader& reader, ProjectFile& project) {
    const bool there = go_to(reader, "Dash");
    std::uint64_t count = 0;
    reader.number(1, count);
    std::size_t room = std::size_t{100} * 320 * 200;
    while (count > 0 && read_bitmap(reader, room, project))
        --count;
    return there;
}

struct Literal {
    ProjectFile project;
    FileRemark remark = FileRemark::none;
};

Literal read_literally(std::span<const std::byte> file) {
    Literal literal;
    LiteralReader reader(file);
    bool there = read_texts(reader, literal.project);
    there |= read_parameters(reader, literal.project);
    there |= read_models(reader, literal.project);
    there |= read_bitmaps(reader, literal.project);
    if (reader.ran_out()) literal.remark = FileRemark::ends_early;
    if (!there) literal.remark = FileRemark::no_car_data;
    return literal;
}

// More pixels than this cost time and tell nothing new; tests load the most.
constexpr std::size_t pixels_worth_comparing = std::size_t{1} << 15;

// Returns the pixels of all bitmaps.
std::size_t check_within_tables(const ProjectFile& project) {
    std::size_t pixels = 0;
    for (const auto& model : project.models)
        expect(model->nverts <= shape_capacity && model->nprims <= shape_capacity, "counts are within the tables");
    for (const BitmapRecord& bitmap : project.bitmaps) {
        expect(has_pixel_buffer(bitmap), "every bitmap has its pixels");
        pixels += bitmap.pixels->size();
    }
    expect(project.bitmaps.size() <= max_bitmaps && pixels <= max_bitmap_pixels, "memory is bounded");
    return pixels;
}

// Follows every bitmap's mask, and the mask's, to its end.
void check_masks_end() {
    for (int i = 1; i <= BITMAPS; ++i) {
        int steps = 0;
        for (int at = i; at != 0 && BITMAP[at].has_mask != 0; at = RBM(BITMAP[at].mask_name))
            expect(++steps <= max_bitmaps, "no mask leads back to itself");
    }
}

void check_kept(const ProjectFile& project) {
    keep_project(project);
    expect(PAINTJOBS >= 1 && PAINTJOBS <= max_paint_jobs, "there is a paint job");
    expect(BITMAPS == project.bitmaps.size(), "every bitmap is in the table");
    for (const DashItem& item : DASHITEM)
        expect(item.bitmap <= BITMAPS && (item.bitmap == 0 || BITMAP[item.bitmap].name == item.id), "items are bound");
    check_masks_end();
}

// Bytes are compared, not tables: most of a table lies past its count, and a run compares many.
void check_same_content(const ProjectFile& a, ProjectFile b) {
    expect(a.paint_jobs == b.paint_jobs, "as many paint jobs");
    expect(a.bitmaps.size() == b.bitmaps.size(), "as many bitmaps");
    for (std::size_t i = 0; i < a.bitmaps.size(); ++i)
        if (a.bitmaps[i].has_mask == 0) b.bitmaps[i].has_mask = 0; // a circle of masks was cut
    expect(encode_project_file(a) == encode_project_file(b), "the same car");
}

void check_round_trip(const ProjectFile& project) {
    const Bytes written = encode_project_file(project);
    ProjectFile again;
    decode_project_file(written, again);
    expect(!again.cut, "what was written has room");
    expect(encode_project_file(again) == written, "what was read is written and read as the same");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (DASHITEM[1].id.empty()) INITDASHITEMS();
    const auto file = input_bytes(data, size);
    expect(is_project_file(file) == (LiteralReader(file).text(4) == "*car"), "a project is known by its start");
    ProjectFile project;
    const FileRemark remark = decode_project_file(file, project);
    expect(!input_is_good || (remark == FileRemark::none && !project.cut), "a good file is read to its end");
    if (check_within_tables(project) > pixels_worth_comparing) return 0;
    const Literal literal = read_literally(file);
    check_same_content(project, literal.project);
    expect(project.cut == literal.project.cut, "cut where the other reader cuts");
    // What has no room is read over by one of the readers and read by the other.
    expect(project.cut || remark == literal.remark, "the same remark");
    check_round_trip(project);
    check_kept(project);
    return 0;
}
