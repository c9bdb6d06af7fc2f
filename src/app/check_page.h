// The page of checks: what the files or the game will not take of this car, and the way to where it is mended.
#pragma once

#include "drawing/canvas.h"
#include "model/finding.h"

#include <cstddef>

constexpr std::size_t findings_on_page = 15;
constexpr int finding_height = 32; // two lines each, the first at the top of page_text (widgets/page.h)

// `pointed` is the number of the one under the pointer, or none of them.
void draw_check_page(Canvas& canvas, const Findings& findings, std::size_t pointed);
// Checks the car and shows the page until a key is pressed or a button goes down; a click on a finding goes to its
// place.
void show_check_page();
