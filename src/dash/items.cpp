#include "dash/items.h"
