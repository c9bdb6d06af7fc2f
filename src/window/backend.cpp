#include "window/backend.h"

namespace {
Backend* backend_in_use = nullptr;
}

Backend* backend() { return backend_in_use; }

void use_backend(Backend* in_use) { backend_in_use = in_use; }
