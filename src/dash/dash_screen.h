// The Dash manager's screen.
#pragma once

// Runs until another screen is picked or the program is to end (CURMENU = 255).
void DASHMANAGER();
