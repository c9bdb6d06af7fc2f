#include "editor3d/views.h"

OneBased<WINDOW3D, views> W3D;

void INIT3DWINDOWS() {
    W3D[1] = {20, 50, 370, 300, 195, 175, 40.0, 255, "Top"};
    W3D[2] = {380, 50, 730, 300, 555, 275, 80.0, 255, "Front"};
    W3D[3] = {20, 315, 370, 565, 195, 540, 60.0, 255, "Side"};
    W3D[4] = {380, 315, 730, 565, 555, 440, 60.0, 255, "3D view"};
}
