// Which model and paint job are looked at, the clipboard, and the renderer's working copies: what goes with the car's
// models without being a part of the car.
#pragma once

#include "model/document.h"

#include <array>
#include <cstdint>
#include <string>

// The renderer's triangulated model.
struct VISUALVERTEX {
    double x = 0, y = 0, z = 0;
    std::int16_t source = 0; // vertex of the SHAPEMODEL
};
struct VISUALPRIM {
    std::uint8_t type = 0; // 2 line, 3 triangle, 11 sphere
    std::array<std::int16_t, 3> corner{};
    std::int16_t prim = 0; // primitive of the SHAPEMODEL
    std::uint16_t material = 0;
    std::uint8_t flags = 0;
};
struct VISUALMODEL {
    std::uint16_t nverts = 0;
    std::array<VISUALVERTEX, 1024> verts{};
    std::uint16_t ntris = 0;
    std::array<VISUALPRIM, 1024> tris{};
};

extern Shared<SHAPEMODEL> CARCLIP; // the 3D editor's clipboard
extern SHAPEMODEL WFCAR;           // working copy of the wireframe views
extern VISUALMODEL VCAR;

extern std::int8_t CURMODEL; // 0 .. 4
extern std::uint8_t CURPJ;   // 0 .. PAINTJOBS - 1

// The slot CURMODEL.
Shared<SHAPEMODEL>& shown_slot();

// What a slot is called on the screen: "Showroom", "Game", "Intro", "Aux 1", "Aux 2".
std::string slot_label(int slot);

// Holds the rule that follows every load: PAINTJOBS is 1 .. 17, and a CURPJ that is not below it becomes 0.
void settle_paint_jobs();

// Back to the state at start-up: empty models, PAINTJOBS 7, CURMODEL and CURPJ 0.
void reset_car();
