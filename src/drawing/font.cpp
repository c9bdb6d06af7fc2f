// The glyphs of code page 437, made from a font file by tools/make_font.
#include "drawing/drawing.h"

namespace {
#include "font_table.inc"
} // namespace

const std::uint8_t* glyph_rows(unsigned char character) { return code_page_437_glyphs[character]; }
