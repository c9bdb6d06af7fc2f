#include "app/input.h"
