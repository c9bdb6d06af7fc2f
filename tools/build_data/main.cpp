// build_data SOURCES TARGET: makes the program's data files from the editable sources, with the program's own writers.
//
// TARGET receives vortag.col, material.dat, images.tga, icon.tga and default.vsh, the folder icons with the window's
// icon in all sizes, and the folder garage with the sample cars, the colour schemes and what is there to be imported.

#include "car_source.h"
#include "cockpit.h"
#include "icon.h"
#include "model/document.h"
#include "source.h"

#include "base/file_io.h"
#include "base/file_status.h"
#include "drawing/drawing.h"
#include "formats/bitmap_file.h"
#include "formats/material_file.h"
#include "formats/palette_file.h"
#include "formats/parameter_file.h"
#include "formats/shape_file.h"
#include "image/picture_file.h"
#include "image/tga.h"
#include "params/parameter_table.h"

#include <cstdio>
#include <exception>

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t opaque = 0xFF000000;
constexpr int icon_size = 48;

void write(const fs::path& file, const Bytes& content) {
    if (save_file(file.string(), content) != SaveOutcome::saved)
        throw SourceError(file.string() + ": cannot be written");
}

void check_saved(const FileOutcome& outcome) {
    if (!outcome.succeeded()) throw SourceError(outcome.file + ": " + std::string(error_text(outcome.code)));
}

std::size_t table_index(const SourceLine& line) {
    const long index = line.integer(0);
    if (index < 0 || index > 255) line.fail("an index is 0 to 255");
    return static_cast<std::size_t>(index);
}

void build_palette(const fs::path& sources, const fs::path& target) {
    for (const SourceLine& line : read_source_lines(sources / "palette.txt"))
        PAL[table_index(line)] = opaque | static_cast<std::uint32_t>(line.hexadecimal(1));
    write(target / "vortag.col", encode_palette(PAL));
}

void build_materials(const fs::path& sources, const fs::path& target) {
    for (const SourceLine& line : read_source_lines(sources / "materials.txt")) {
        MATERIAL[table_index(line)] = {.colour = opaque | static_cast<std::uint32_t>(line.hexadecimal(1)),
                                       .attribute = static_cast<std::uint8_t>(line.integer(2))};
    }
    write(target / "material.dat", encode_materials(MATERIAL));
}

void build_icons(const fs::path& sources, const fs::path& target) {
    const ImageHandle bar = create_image(4 * icon_size, icon_size, 0);
    Canvas canvas(*bar);
    int x = 0;
    for (const char* name : {"files.png", "editor3d.png", "dash.png", "params.png"}) {
        draw_image(canvas, *read_png(sources / "icons" / name), x, 0, DrawMode::copy);
        x += icon_size;
    }
    write(target / "images.tga", encode_targa_32(*bar));
    const ImageHandle window = read_png(sources / "icons" / "window.png");
    write(target / "icon.tga", encode_targa_32(*window));
    fs::create_directories(target / "icons");
    for (const int size : {16, 24, 32, 48, 64, 128, 256, 512})
        write(target / "icons" / (std::to_string(size) + ".png"),
              encode_png(*scaled_icon(*window, size), true).value());
}

void build_car(const fs::path& sources, const std::string& id, const fs::path& garage) {
    INITPARAMTARGETS();
    PAR.fill(std::byte{0});
    const fs::path cockpit_sources = sources / "cockpits" / id;
    const Cockpit cockpit = read_cockpit(cockpit_sources);
    store_gauges(cockpit_sources, cockpit);
    read_car(sources / "cars" / id);

    check_saved(SAVERES((garage / ("car" + id + ".res")).string()));
    check_saved(SAVE3SH((garage / ("st" + id + ".3sh")).string()));
    write(garage / ("stda" + id + ".vsh"), encode_bitmaps(cockpit.dashboard));
    write(garage / ("stdb" + id + ".vsh"), encode_bitmaps(cockpit.dots_and_digits));
}

void build_all(const fs::path& sources, const fs::path& target) {
    const fs::path garage = target / "garage";
    fs::remove_all(garage); // nothing of a car that is gone stays
    fs::create_directories(garage);
    build_palette(sources, target);
    build_materials(sources, target);
    build_icons(sources, target);
    write(target / "default.vsh", encode_default_set(read_cockpit(sources / "cockpits" / "default")));
    for (const auto& entry : fs::directory_iterator(sources / "cars"))
        if (entry.is_directory()) build_car(sources, entry.path().filename().string(), garage);

    const auto overwrite = fs::copy_options::overwrite_existing;
    fs::copy_file(sources / "pjobs.cfg", garage / "pjobs.cfg", overwrite);
    for (const auto& entry : fs::directory_iterator(sources / "garage"))
        fs::copy_file(entry.path(), garage / entry.path().filename(), overwrite);
}

} // namespace

int main(int argument_count, char** arguments) {
    if (argument_count != 3) {
        std::fputs("usage: build_data SOURCES TARGET\n", stderr);
        return 2;
    }
    try {
        build_all(arguments[1], arguments[2]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "build_data: %s\n", error.what());
        return 1;
    }
    return 0;
}
