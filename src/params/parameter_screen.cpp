#include "params/parameter_screen.h"

#include "app/title_screen.h"

void EDITPARAMS() { run_title_screen("= PHYSICAL PARAMETERS ="); }
