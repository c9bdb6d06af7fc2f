// The car that a person starts with.
#pragma once

// Empty models, seven paint jobs, the default parameters and texts. Bitmaps stay as they are: the default cockpit comes
// from a file.
void new_car();
