// The four views of the 3D editor: where they lie on the screen, how they look at the model, and their pictures.
#pragma once

#include "base/table.h"

#include <cstdint>
#include <string>

struct WINDOW3D {
    std::uint16_t left = 0, top = 0, right = 0, bottom = 0; // the frame, in pixels
    std::uint16_t origin_x = 0, origin_y = 0;               // where the model's origin is drawn
    double zoom = 0;                                        // pixels per model unit
    std::uint8_t enabled = 0;                               // 0: not drawn
    std::string caption;
};

constexpr int views = 4;
constexpr int view_3d = 4;
extern OneBased<WINDOW3D, views> W3D; // 1 top, 2 front, 3 side, 4 perspective

extern double CURYAW, CURPITCH; // how the perspective view turns the model, in radians

// Sets all four views to what the editor starts with.
void INIT3DWINDOWS();

// Draws view 1 .. 4 within its frame: slot CURMODEL, in paint job CURPJ. The wireframe views take a copy of the model
// into WFCAR, the perspective view its pieces into VCAR.
void UPDATE3DWINDOW(std::uint8_t view);
