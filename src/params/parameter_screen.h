// The Physical parameters screen.
#pragma once

// Runs until another screen is picked or the program is to end (CURMENU = 255).
void EDITPARAMS();
