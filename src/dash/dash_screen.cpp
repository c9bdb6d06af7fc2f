#include "dash/dash_screen.h"

#include "widgets/title_screen.h"

void DASHMANAGER() { run_title_screen("= DASH MANAGER ="); }
