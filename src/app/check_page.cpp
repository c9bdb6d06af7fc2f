#include "app/check_page.h"

#include "app/check_places.h"
#include "drawing/drawing.h"
#include "model/check_car.h"
#include "widgets/page.h"
#include "widgets/widgets.h"

#include <algorithm>
#include <optional>

namespace {

constexpr std::uint32_t doubtful_colour = 0xFFC8B400;
constexpr int what_x = page_text.x1 + 20 * glyph_width;
constexpr std::size_t nobody = findings_on_page;

std::uint32_t colour_of(Severity severity) {
    switch (severity) {
    case Severity::serious: return colour::error;
    case Severity::doubtful: return doubtful_colour;
    case Severity::forgotten: break;
    }
    return colour::value;
}

int top_of(std::size_t number) { return page_text.y1 + finding_height * static_cast<int>(number); }

void draw_finding(Canvas& canvas, const Finding& finding, int y) {
    draw_text(canvas, page_text.x1, y, finding.where, colour_of(finding.severity));
    draw_text(canvas, what_x, y, finding.what, colour::title);
    draw_text(canvas, what_x, y + glyph_height, finding.remedy, colour::label);
}

std::string heading_of(const Findings& findings) {
    if (findings.empty()) return "Checks";
    const std::size_t serious = serious_findings(findings);
    return "Checks: " + std::to_string(findings.size()) + " found, " + std::to_string(serious) + " serious";
}

std::size_t shown(const Findings& findings) { return std::min(findings.size(), findings_on_page); }

std::size_t finding_at(const Findings& findings, Point at) {
    if (!page_text.contains(at)) return nobody;
    const auto number = static_cast<std::size_t>((at.y - page_text.y1) / finding_height);
    return number < shown(findings) ? number : nobody;
}

} // namespace

void draw_check_page(Canvas& canvas, const Findings& findings, std::size_t pointed) {
    draw_page(canvas, "= CHECKS =", heading_of(findings),
              findings.empty() ? "Any key or click closes this page"
                               : "A click on a line goes there, any key closes this page");
    if (findings.empty())
        draw_text(canvas, page_text.x1, page_text.y1, "Nothing found: the files and the game take this car.",
                  colour::success);
    for (std::size_t number = 0; number < shown(findings); ++number) {
        const int y = top_of(number);
        if (number == pointed)
            fill_box(canvas, {page_text.x1 - 4, y, page_text.x2 + 4, y + finding_height - 1}, colour::hover);
        draw_finding(canvas, findings[number], y);
    }
    if (findings.size() > findings_on_page)
        draw_text(canvas, page_text.x1, top_of(findings_on_page),
                  "and " + std::to_string(findings.size() - findings_on_page) + " more", colour::label);
}

void show_check_page() {
    const Findings findings = check_car(DOCUMENT);
    std::size_t pointed = finding_at(findings, mouse().at());
    const auto pressed = show_page([&](Canvas& canvas) { draw_check_page(canvas, findings, pointed); },
                                   [&](const Input& input) {
                                       const std::size_t before = pointed;
                                       pointed = finding_at(findings, input.mouse.at());
                                       return pointed != before;
                                   });
    const std::size_t chosen = pressed ? finding_at(findings, *pressed) : nobody;
    if (chosen != nobody) go_to_place(findings[chosen].place);
}
