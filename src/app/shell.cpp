#include "app/shell.h"
