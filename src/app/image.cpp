#include "app/image.h"
