#include "dash/dash_screen.h"

#include "app/title_screen.h"

void DASHMANAGER() { run_title_screen("= DASH MANAGER ="); }
