#include "convert/bitmap_layout.h"

#include "convert/text_rows.h"
#include "formats/resource_archive.h"

#include <algorithm>
#include <limits>

namespace {

constexpr std::string_view bitmap_word = "bitmap", mask_word = "mask", empty_word = "empty", pixels_word = "pixels",
                           of_word = "of";
constexpr std::size_t runs_a_line = 10;

// --- writing --------------------------------------------------------------------------------------------------------

std::string numbers_text(const BitmapRecord& bitmap) {
    std::string text;
    const auto add = [&](int number) { text += " " + std::to_string(number); };
    add(bitmap.width);
    add(bitmap.height);
    add(bitmap.relative_x);
    add(bitmap.relative_y);
    add(bitmap.header_word_3);
    add(bitmap.header_word_4);
    for (const std::uint8_t flag : bitmap.flags)
        add(flag);
    return text;
}

std::string source_text(const LayoutRow& row) {
    if (!row.owner.empty()) return " " + std::string(of_word) + " " + quoted_text(row.owner);
    return row.picture.empty() ? "" : " " + row.picture;
}

std::string_view word_for(LayoutRow::Kind kind) {
    switch (kind) {
    case LayoutRow::Kind::bitmap: return bitmap_word;
    case LayoutRow::Kind::mask: return mask_word;
    default: return empty_word;
    }
}

std::string runs_text(const std::vector<PixelRun>& runs) {
    std::string text;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        if (i % runs_a_line == 0) text += (i == 0 ? "" : "\n") + std::string(pixels_word);
        text += " " + std::to_string(runs[i].at) + ":" + std::to_string(runs[i].value) + "x" +
                std::to_string(runs[i].count);
    }
    return runs.empty() ? text : text + "\n";
}

// --- reading --------------------------------------------------------------------------------------------------------

// The ten numbers at the end of a row.
void read_numbers(const TextRow& row, std::size_t at, BitmapRecord& bitmap) {
    constexpr long most_word = std::numeric_limits<std::uint16_t>::max();
    constexpr long least_place = std::numeric_limits<std::int16_t>::min();
    constexpr long most_place = std::numeric_limits<std::int16_t>::max();
    constexpr std::size_t numbers = 10;
    row.expect_words(at + numbers);
    const auto word = [&] { return static_cast<std::uint16_t>(row.number(at++, 0, most_word)); };
    const auto place = [&] { return static_cast<std::int16_t>(row.number(at++, least_place, most_place)); };
    bitmap.width = word();
    bitmap.height = word();
    bitmap.relative_x = place();
    bitmap.relative_y = place();
    bitmap.header_word_3 = word();
    bitmap.header_word_4 = word();
    for (std::uint8_t& flag : bitmap.flags)
        flag = static_cast<std::uint8_t>(row.number(at++, 0, std::numeric_limits<std::uint8_t>::max()));
}

std::size_t area(const BitmapRecord& bitmap) { return std::size_t{bitmap.width} * bitmap.height; }

// A picture stands in the folder itself.
std::string picture_name(const TextRow& row, std::size_t at) {
    const std::string& name = row.word(at);
    if (name.find('/') != std::string::npos) row.refuse("\"" + name + "\" is no file of this folder");
    return name;
}

std::string id_at(const TextRow& row, std::size_t at) {
    std::string id = row.quoted(at);
    if (id.size() != archive_id_length) row.refuse("an id has four characters");
    return id;
}

LayoutRow read_bitmap_row(const TextRow& row, LayoutRow::Kind kind) {
    LayoutRow result{.kind = kind, .bitmap = {}};
    std::size_t at = 1;
    result.bitmap.name = id_at(row, at++);
    if (kind == LayoutRow::Kind::mask && row.word(at) == of_word) {
        result.owner = id_at(row, ++at);
        ++at;
    } else if (kind != LayoutRow::Kind::empty) {
        result.picture = picture_name(row, at++);
    }
    read_numbers(row, at, result.bitmap);
    if ((area(result.bitmap) == 0) != (kind == LayoutRow::Kind::empty))
        row.refuse(kind == LayoutRow::Kind::empty ? "an empty bitmap that has an area" : "a bitmap without an area");
    return result;
}

PixelRun read_run(const TextRow& row, std::string_view word, std::size_t pixels) {
    const std::size_t colon = word.find(':'), times = word.find('x');
    if (colon == std::string_view::npos || times == std::string_view::npos || times < colon)
        row.refuse("pixels are PLACE:VALUExCOUNT");
    const auto most = static_cast<long>(pixels);
    PixelRun run;
    run.at = static_cast<std::size_t>(row.number_in(word.substr(0, colon), 0, most));
    run.value = static_cast<std::uint8_t>(row.number_in(word.substr(colon + 1, times - colon - 1), 0, 255));
    run.count = static_cast<std::size_t>(row.number_in(word.substr(times + 1), 1, most));
    if (run.at + run.count > pixels) row.refuse("pixels past the end of the bitmap");
    return run;
}

void read_runs(const TextRow& row, LayoutRow& bitmap) {
    for (std::size_t at = 1; at < row.words.size(); ++at) {
        const PixelRun run = read_run(row, row.word(at), area(bitmap.bitmap));
        const bool rises = bitmap.kept.empty() || bitmap.kept.back().at + bitmap.kept.back().count <= run.at;
        if (!rises) row.refuse("pixels that do not lie behind those before them");
        bitmap.kept.push_back(run);
    }
}

} // namespace

std::string layout_text(const std::vector<LayoutRow>& rows) {
    std::string text = "# kind id picture width height x y word3 word4 flags; \"pixels\" are what a picture cannot "
                       "carry of the bitmap before\n";
    for (const LayoutRow& row : rows) {
        text += std::string(word_for(row.kind)) + " " + quoted_text(row.bitmap.name) + source_text(row) +
                numbers_text(row.bitmap) + "\n";
        text += runs_text(row.kept);
    }
    return text;
}

std::vector<LayoutRow> read_layout(std::string_view text) {
    std::vector<LayoutRow> rows;
    for (const TextRow& row : read_text_rows(text)) {
        const std::string& word = row.word(0);
        if (word == bitmap_word)
            rows.push_back(read_bitmap_row(row, LayoutRow::Kind::bitmap));
        else if (word == mask_word)
            rows.push_back(read_bitmap_row(row, LayoutRow::Kind::mask));
        else if (word == empty_word)
            rows.push_back(read_bitmap_row(row, LayoutRow::Kind::empty));
        else if (word == pixels_word && !rows.empty())
            read_runs(row, rows.back());
        else
            row.refuse("a row begins with bitmap, mask or empty, and pixels follow one of them");
    }
    return rows;
}
