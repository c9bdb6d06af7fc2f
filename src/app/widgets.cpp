#include "app/widgets.h"
