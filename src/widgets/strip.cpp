#include "widgets/strip.h"

#include "base/code_page.h"
#include "base/file_status.h"
#include "base/reset.h"
#include "base/text.h"
#include "widgets/widgets.h"
#include "window/input.h"
#include "window/window.h"

#include <algorithm>
#include <vector>

namespace {

constexpr std::size_t cells = (strip_right - strip_left + 1) / glyph_width;
constexpr std::size_t gap = 2; // cells between the message and the facts
constexpr std::size_t most_lines = 2;
constexpr std::uint32_t message_colour = colour::title;
constexpr std::uint32_t fact_colour = colour::label;

struct Words {
    std::string message, screen_fact, car_fact;
    bool operator==(const Words&) const = default;
};

struct Strip {
    Words words, drawn;
    double said_at = 0;
};
Strip strip;

std::vector<std::string> facts() {
    std::vector<std::string> lines;
    for (const std::string& fact : {strip.words.car_fact, strip.words.screen_fact})
        if (!fact.empty()) lines.push_back(fact.substr(0, cells));
    return lines;
}

std::size_t widest(const std::vector<std::string>& lines) {
    std::size_t width = 0;
    for (const std::string& line : lines)
        width = std::max(width, line.size());
    return width;
}

// One line stands in the middle, two above and below it.
int line_y(std::size_t line, std::size_t lines) {
    const int height = glyph_height * static_cast<int>(lines);
    const int first = strip_top + (strip_bottom - strip_top + 1 - height) / 2;
    return first + glyph_height * static_cast<int>(line);
}

void draw_lines(const std::vector<std::string>& lines, bool at_right, std::uint32_t colour) {
    for (std::size_t k = 0; k < lines.size(); ++k) {
        const int width = glyph_width * static_cast<int>(lines[k].size());
        draw_text(screen(), at_right ? strip_right + 1 - glyph_width - width : strip_left + glyph_width,
                  line_y(k, lines.size()), lines[k], colour);
    }
}

// One message for all that was noted since the last time.
void say_what_could_not_be_read() {
    const std::vector<std::string> files = take_unreadable_files();
    if (files.empty()) return;
    const std::string others = files.size() == 1 ? "" : " (and " + std::to_string(files.size() - 1) + " more)";
    say("Cannot read " + code_page_from_utf8(files.front()) + others);
}

void draw_strip() {
    const ScreenLock one_frame;
    fill_box(screen(), strip_left, strip_top, strip_right, strip_bottom, colour::background);
    const std::vector<std::string> standing = facts();
    const std::size_t taken = standing.empty() ? 2 : widest(standing) + gap + 2;
    if (taken < cells) {
        std::vector<std::string> message = wrapped(strip.words.message, cells - taken);
        message.resize(std::min(message.size(), most_lines));
        draw_lines(message, false, message_colour);
    }
    draw_lines(standing, true, fact_colour);
}

} // namespace

void say(const std::string& message) {
    if (message.empty()) return;
    strip.words.message = message;
    strip.said_at = timer();
}

void unsay(const std::string& message) {
    if (strip.words.message == message) strip.words.message.clear();
}

const std::string& said() { return strip.words.message; }

void set_screen_fact(const std::string& fact) { strip.words.screen_fact = fact; }
void set_car_fact(const std::string& fact) { strip.words.car_fact = fact; }

void keep_strip() {
    say_what_could_not_be_read();
    if (const auto end = strip_changes_at(); end && timer() >= *end) strip.words.message.clear();
    if (const auto at = strip_changes_at()) alarm_no_later_than(*at);
    if (strip.words == strip.drawn) return;
    strip.drawn = strip.words;
    draw_strip();
}

std::optional<double> strip_changes_at() {
    if (strip.words.message.empty()) return std::nullopt;
    return strip.said_at + message_seconds;
}

void reset_strip() { strip = {}; }

namespace {
const ResetWithProgram registered(reset_strip);
}
