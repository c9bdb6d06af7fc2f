#include "app/drawing.h"
