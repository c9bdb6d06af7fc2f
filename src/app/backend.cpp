#include "app/backend.h"
