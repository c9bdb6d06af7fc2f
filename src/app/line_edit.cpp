#include "app/line_edit.h"
