#include "app/key_translation.h"
