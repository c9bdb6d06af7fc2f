#include "formats/resource_archive.h"
