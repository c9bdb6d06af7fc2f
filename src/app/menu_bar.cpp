#include "app/menu_bar.h"
