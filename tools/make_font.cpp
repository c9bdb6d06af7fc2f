// Turns the Terminus 8 x 16 font of code page 437 into the table that the program draws its text with.
//
// The font file's only character map is the code page itself: FreeType shows it as a map without an encoding, whose
// character codes are the 256 bytes. The file lacks two of the code page's characters and marks a third as undefined;
// those are drawn here.
//
//     make_font <font file> <output file>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <array>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <optional>
#include <string>

namespace {

constexpr int glyph_width = 8;
constexpr int glyph_height = 16;
using Glyph = std::array<std::uint8_t, glyph_height>;

constexpr Glyph blank{};
constexpr Glyph bullet = {0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x18, 0x3C,
                          0x3C, 0x18, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
constexpr Glyph beamed_notes = {0x00, 0x00, 0x1E, 0x32, 0x22, 0x2E, 0x32, 0x22,
                                0x22, 0x22, 0x66, 0xEE, 0xEC, 0x40, 0x00, 0x00};

std::optional<Glyph> drawn_here(int character) {
    switch (character) {
    case 0: return blank;
    case 7: return bullet;
    case 14: return beamed_notes;
    default: return std::nullopt;
    }
}

// Everything of FreeType that has to be given back.
class Font {
public:
    Font() = default;
    ~Font() {
        if (face_) FT_Done_Face(face_);
        if (library_) FT_Done_FreeType(library_);
    }
    Font(const Font&) = delete;
    Font& operator=(const Font&) = delete;

    bool open(const char* file) {
        return FT_Init_FreeType(&library_) == 0 && FT_New_Face(library_, file, 0, &face_) == 0 &&
               face_->num_charmaps == 1 && FT_Set_Charmap(face_, face_->charmaps[0]) == 0 && is_8_by_16();
    }

    std::optional<Glyph> glyph(int character) const {
        const FT_UInt index = FT_Get_Char_Index(face_, static_cast<FT_ULong>(character));
        if (index == 0) return std::nullopt;
        if (FT_Load_Glyph(face_, index, FT_LOAD_RENDER | FT_LOAD_TARGET_MONO) != 0) return std::nullopt;
        const FT_Bitmap& bitmap = face_->glyph->bitmap;
        if (bitmap.pixel_mode != FT_PIXEL_MODE_MONO || bitmap.width != glyph_width || bitmap.rows != glyph_height)
            return std::nullopt;
        Glyph rows{};
        for (int row = 0; row < glyph_height; ++row)
            rows[static_cast<std::size_t>(row)] = bitmap.buffer[row * bitmap.pitch];
        return rows;
    }

private:
    bool is_8_by_16() const {
        return face_->num_fixed_sizes == 1 && face_->available_sizes[0].width == glyph_width &&
               face_->available_sizes[0].height == glyph_height;
    }

    FT_Library library_ = nullptr;
    FT_Face face_ = nullptr;
};

std::string as_source_line(int character, const Glyph& glyph) {
    std::string line = "    {";
    for (const std::uint8_t row : glyph) {
        char text[8];
        std::snprintf(text, sizeof text, "0x%02X, ", row);
        line += text;
    }
    line.resize(line.size() - 2);
    char comment[16];
    std::snprintf(comment, sizeof comment, "}, // 0x%02X\n", character);
    return line + comment;
}

bool write_table(const Font& font, std::ofstream& output) {
    output << "// Made from the font file at build time.\n"
              "const std::uint8_t code_page_437_glyphs[256][16] = {\n";
    for (int character = 0; character < 256; ++character) {
        auto glyph = drawn_here(character);
        if (!glyph) glyph = font.glyph(character);
        if (!glyph) {
            std::fprintf(stderr, "make_font: the font has no 8 x 16 glyph for character 0x%02X\n", character);
            return false;
        }
        output << as_source_line(character, *glyph);
    }
    output << "};\n";
    return output.flush().good();
}

} // namespace

int main(int argument_count, char** arguments) {
    if (argument_count != 3) {
        std::fprintf(stderr, "usage: make_font <font file> <output file>\n");
        return 2;
    }
    Font font;
    if (!font.open(arguments[1])) {
        std::fprintf(stderr, "make_font: %s is not an 8 x 16 font with one character map\n", arguments[1]);
        return 1;
    }
    std::ofstream output(arguments[2]);
    return write_table(font, output) ? 0 : 1;
}
