#include "app/scripted_backend.h"
