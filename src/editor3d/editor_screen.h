// The 3D editor's screen.
#pragma once

// Runs until another screen is picked or the program is to end (CURMENU = 255).
void EDIT3D();
