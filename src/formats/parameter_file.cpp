#include "formats/parameter_file.h"
