// Placing bitmaps on the dashboard's canvas, and taking them away. Sums of positions wrap to 16 bits.
#pragma once

// Places the bitmap so that its top left corner is as near (x, y) on the canvas as the limits allow: panels ("ins1",
// "ins3", "inm1", "inm3") inside "ins2", everything else inside the canvas; what is larger than its room is flush with
// its right and bottom edge. Its mask is placed where it is, and with "ins2" the panels move along. An index outside
// 1 .. BITMAPS changes nothing.
void MOVEDASHIMAGETO(int index, int x, int y);

// Removes the bitmap and its mask, and binds the items anew. An index outside 1 .. BITMAPS changes nothing.
void REMOVEBITMAP(int index);
