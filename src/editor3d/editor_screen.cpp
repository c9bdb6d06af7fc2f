#include "editor3d/editor_screen.h"

#include "widgets/title_screen.h"

void EDIT3D() { run_title_screen("= 3D EDITOR ="); }
