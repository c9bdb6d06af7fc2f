// The rows of the file list on the screen: which are in view, which one is pointed at.
#pragma once

#include "drawing/drawing.h"

struct ListView {
    int top = 1;  // LFILE index of the first row
    int row = -1; // that is pointed at, 0 .. 27, or no_list_row
};
constexpr int list_rows = 28;
constexpr int no_list_row = -1;

// Whether a place counts as in the list, and the row there; none in the last pixels under the last row.
bool in_list(Point at);
int list_row_at(Point at);
// The LFILE index that a row shows, 0 when it is empty or no row.
int list_entry(const ListView& view, int row);
// By the wheel, and by whole pages.
void scroll_list(ListView& view, int rows_down);
void page_list(ListView& view, int pages_down);
// The list may have become shorter: its first row stays where the last entry is still in view.
void keep_in_list(ListView& view);

// The whole list, or one row of it, on fresh background.
void draw_list(const ListView& view, Canvas& canvas);
void draw_list_row(const ListView& view, int row, Canvas& canvas);
