#include "model/colours.h"
