#include "formats/material_file.h"
