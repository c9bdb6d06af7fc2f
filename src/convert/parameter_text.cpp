#include "convert/parameter_text.h"

#include "convert/refusal.h"
#include "convert/text_rows.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace {

// --- the table ------------------------------------------------------------------------------------------------------

enum class Kind {
    byte,
    word,
    signed_word,
    byte_pair,        // a point on the canvas
    signed_word_pair, // a point relative to a bitmap
};

struct KindWidth {
    std::size_t numbers, bytes_a_number;
    long least, most;

    constexpr std::size_t bytes() const { return numbers * bytes_a_number; }
};

constexpr KindWidth width_of(Kind kind) {
    switch (kind) {
    case Kind::byte: return {1, 1, 0, 255};
    case Kind::word: return {1, 2, 0, 65535};
    case Kind::signed_word: return {1, 2, -32768, 32767};
    case Kind::byte_pair: return {2, 1, 0, 255};
    case Kind::signed_word_pair: return {2, 2, -32768, 32767};
    default: return {1, 1, 0, 255};
    }
}

// One key of the text, and where its values lie. Where they take more than a row, each row begins with the number of
// the first value that it holds, counted from 0.
struct Key {
    std::string_view name;
    int offset;
    Kind kind;
    std::size_t values = 1, values_a_row = 1;
    std::string_view note{};

    bool has_many_rows() const { return values > values_a_row; }
};

constexpr std::size_t tips_of(int most_points) { return static_cast<std::size_t>(most_points) + 1; }
constexpr std::size_t numbers_a_row = 8;
constexpr int gauge_count = 4, gauge_tips = 6; // of a gauge, from its offset
constexpr int first_unknown = par_offset::tachometer + gauge_tips + 2 * (most_tachometer_points + 1);

constexpr Key keys[] = {
    {"gears", par_offset::gear_count, Kind::byte},
    {"purple", par_offset::purple, Kind::byte, 1, 1, "colours stand where the meaning in the game is not known"},
    {"mass", par_offset::mass, Kind::word},
    {"brakes", par_offset::brakes, Kind::word},
    {"idle_rpm", par_offset::idle_rpm, Kind::word},
    {"downshift_rpm", par_offset::downshift_rpm, Kind::word},
    {"upshift_rpm", par_offset::upshift_rpm, Kind::word},
    {"maximum_rpm", par_offset::maximum_rpm, Kind::word},
    {"yellow", par_offset::yellow, Kind::word},
    {"gear_ratio", par_offset::gear_ratio(1), Kind::word, 6, 6, "from gear 1 on"},
    {"knob", par_offset::knobs, Kind::signed_word_pair, 7, 7,
     "the gate, then gears 1 to 6, from the gear box's corner"},
    {"air_drag", par_offset::air_drag, Kind::word},
    {"torque", par_offset::torque_curve, Kind::byte, torque_points, numbers_a_row, "point n is at 128 x n rpm"},
    {"blue", par_offset::blue, Kind::word},
    {"grip", par_offset::intrinsic_grip, Kind::word},
    {"red", par_offset::red(1), Kind::word, 7, 7},
    {"grip_airborne", par_offset::grip_airborne, Kind::word},
    {"grip_on_asphalt", par_offset::grip_on_asphalt, Kind::word},
    {"grip_on_dirt", par_offset::grip_on_dirt, Kind::word},
    {"grip_on_ice", par_offset::grip_on_ice, Kind::word},
    {"grip_on_grass", par_offset::grip_on_grass, Kind::word},
    {"orange", par_offset::orange(1), Kind::word, 5, 5},
    {"collision_half_width", par_offset::collision_half_width, Kind::word},
    {"collision_height", par_offset::collision_height, Kind::word},
    {"collision_half_length", par_offset::collision_half_length, Kind::word},
    {"collision_radius", par_offset::collision_radius, Kind::word},
    {"centre_height", par_offset::centre_height, Kind::word},
    {"wheels", par_offset::wheels, Kind::signed_word, 12, 3, "of each wheel: across, a number not understood, along"},
    {"steering_marker", par_offset::steering_markers, Kind::byte_pair, 31, numbers_a_row, "places on the canvas"},
    {"speedometer_centre", par_offset::speedometer, Kind::signed_word_pair, 1, 1, "from the instruments' corner"},
    {"speedometer_points", par_offset::speedometer + gauge_count, Kind::word, 1, 1, "a point is 2.5 mph"},
    {"speedometer_tip", par_offset::speedometer + gauge_tips, Kind::byte_pair, tips_of(most_speedometer_points),
     numbers_a_row},
    {"tachometer_centre", par_offset::tachometer, Kind::signed_word_pair, 1, 1, "from the instruments' corner"},
    {"tachometer_points", par_offset::tachometer + gauge_count, Kind::word, 1, 1, "a point is 128 rpm"},
    {"tachometer_tip", par_offset::tachometer + gauge_tips, Kind::byte_pair, tips_of(most_tachometer_points),
     numbers_a_row},
    {"unknown", first_unknown, Kind::byte, parameter_bytes - first_unknown, numbers_a_row, "kept as they are"},
};

// Every byte has its key, and only one.
static_assert([] {
    std::size_t next = 0;
    for (const Key& key : keys) {
        if (key.offset != static_cast<int>(next)) return false;
        next += key.values * width_of(key.kind).bytes();
    }
    return next == parameter_bytes;
}());

struct Text {
    std::string_view name;
    std::string ParameterFile::*text;
    std::size_t longest;
};
constexpr Text texts[] = {
    {"name", &ParameterFile::name, longest_name},
    {"sign", &ParameterFile::sign_name, longest_name},
    {"description", &ParameterFile::information, longest_information}, // as many rows as it takes
};

std::size_t offset_of_value(const Key& key, std::size_t value) {
    return static_cast<std::size_t>(key.offset) + value * width_of(key.kind).bytes();
}

// --- writing --------------------------------------------------------------------------------------------------------

long number_at(const ParameterBlock& par, std::size_t offset, const KindWidth& width) {
    const long low = std::to_integer<long>(par[offset]);
    if (width.bytes_a_number == 1) return low;
    const long word = low | std::to_integer<long>(par[offset + 1]) << 8;
    return width.least < 0 ? static_cast<std::int16_t>(word) : word;
}

std::string value_text(const ParameterBlock& par, std::size_t offset, const KindWidth& width) {
    std::string text = std::to_string(number_at(par, offset, width));
    if (width.numbers == 2) text += "," + std::to_string(number_at(par, offset + width.bytes_a_number, width));
    return text;
}

std::string row_text(const Key& key, std::size_t first, const ParameterBlock& par) {
    std::string row(key.name);
    if (key.has_many_rows()) row += " " + std::to_string(first);
    const std::size_t end = std::min(first + key.values_a_row, key.values);
    for (std::size_t value = first; value < end; ++value)
        row += " " + value_text(par, offset_of_value(key, value), width_of(key.kind));
    return row;
}

std::string rows_of(const Key& key, const ParameterBlock& par) {
    std::string rows;
    for (std::size_t first = 0; first < key.values; first += key.values_a_row) {
        rows += row_text(key, first, par);
        if (first == 0 && !key.note.empty()) rows += "  # " + std::string(key.note);
        rows += '\n';
    }
    return rows;
}

// The description line by line, each with the "]" that ends it.
std::string description_rows(std::string_view text) {
    std::string rows;
    do {
        const std::string_view line = text.substr(0, text.substr(0, text.find(']')).size() + 1);
        rows += "description " + quoted_text(line) + "\n";
        text.remove_prefix(line.size());
    } while (!text.empty());
    return rows;
}

// --- reading --------------------------------------------------------------------------------------------------------

class Reader {
public:
    explicit Reader(ParameterFile& car) : car_(car) {}

    void take(const TextRow& row) {
        const std::string& name = row.word(0);
        if (const auto text = std::ranges::find(texts, name, &Text::name); text != std::end(texts))
            return take_text(row, *text);
        const auto key = std::ranges::find(keys, name, &Key::name);
        if (key == std::end(keys)) row.refuse("nothing is called \"" + name + "\"");
        take_values(row, *key);
    }

private:
    void take_text(const TextRow& row, const Text& text) {
        row.expect_words(2);
        const bool continues = text.text == &ParameterFile::information;
        std::string& target = car_.*text.text;
        bool& seen = seen_texts_[static_cast<std::size_t>(&text - texts)];
        if (seen && !continues) row.refuse("\"" + std::string(text.name) + "\" a second time");
        if (!std::exchange(seen, true)) target.clear();
        target += row.quoted(1);
        if (target.find('\0') != std::string::npos) row.refuse("a text cannot hold \\x00");
        if (target.size() > text.longest) row.refuse("longer than " + std::to_string(text.longest) + " characters");
    }

    void take_values(const TextRow& row, const Key& key) {
        const std::size_t first_word = key.has_many_rows() ? 2 : 1;
        const auto last = static_cast<long>(key.values) - 1;
        auto value = key.has_many_rows() ? static_cast<std::size_t>(row.number(1, 0, last)) : std::size_t{0};
        if (row.words.size() <= first_word) row.refuse("a value is missing");
        for (std::size_t at = first_word; at < row.words.size(); ++at, ++value) {
            if (value == key.values) row.refuse("too many values");
            take_value(row, key, value, row.word(at));
        }
    }

    void take_value(const TextRow& row, const Key& key, std::size_t value, std::string_view word) {
        const KindWidth width = width_of(key.kind);
        const std::size_t offset = offset_of_value(key, value);
        if (seen_bytes_[offset]) row.refuse("a value for the second time");
        seen_bytes_.set(offset);
        const std::size_t comma = word.find(',');
        if ((comma != std::string_view::npos) != (width.numbers == 2))
            row.refuse(width.numbers == 2 ? "a place is two numbers with a comma between them" : "a comma");
        put(row, offset, width, word.substr(0, comma));
        if (width.numbers == 2) put(row, offset + width.bytes_a_number, width, word.substr(comma + 1));
    }

    void put(const TextRow& row, std::size_t offset, const KindWidth& width, std::string_view number) {
        const auto bits = static_cast<unsigned long>(row.number_in(number, width.least, width.most));
        for (std::size_t i = 0; i < width.bytes_a_number; ++i)
            car_.par[offset + i] = static_cast<std::byte>(bits >> 8 * i & 0xFF);
    }

    ParameterFile& car_;
    std::array<bool, std::size(texts)> seen_texts_{};
    std::bitset<parameter_bytes> seen_bytes_;
};

} // namespace

std::string parameter_text(const ParameterFile& car) {
    std::string text = "# The parameters of a car, a row for each. A row that is missing is as a new car has it.\n";
    text += "name " + quoted_text(car.name) + "\n";
    text += "sign " + quoted_text(car.sign_name) + "\n";
    text += description_rows(car.information) + "\n";
    for (const Key& key : keys)
        text += rows_of(key, car.par);
    return text;
}

void read_parameter_text(std::string_view text, ParameterFile& car) {
    const std::vector<TextRow> rows = read_text_rows(text);
    if (rows.empty()) throw Refusal("no row in it");
    Reader reader(car);
    for (const TextRow& row : rows)
        reader.take(row);
}
