#include "params/parameter_table.h"
