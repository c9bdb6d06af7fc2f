#include "app/window.h"
