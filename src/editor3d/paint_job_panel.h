// The panel of colour schemes, over the 3D editor's info panel: a click on a scheme recolours the current paint job.
#pragma once

#include "widgets/key_table.h"

// Shows the schemes until one is clicked, or until Escape, the right button or the window's close request leaves the
// model as it is. A choice replaces the materials of the commonest colour group of the slot CURMODEL in the paint job
// CURPJ; see recolour. The place of the panel is plain background afterwards. The close request stays unread.
void PJSELECTION();
KeyHelpTable paint_job_panel_keys();
