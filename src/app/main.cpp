// The editor's entry: a window of SDL, the program behind it.

#include "app/program.h"
#include "base/config.h"
#include "window/backend.h"
#include "window/sdl_backend.h"

#include <cstdio>
#include <string>

int main(int /*argument_count*/, char** arguments) {
    const std::string invocation_path = arguments[0] ? arguments[0] : "";
    const auto window = make_sdl_backend(program_directory(invocation_path) + "icon.tga");
    use_backend(window.get());

    std::string error;
    if (!start_up(invocation_path, error)) {
        std::fprintf(stderr, "karosmit: %s\n", error.c_str());
        return 1;
    }
    run_screens();
    shut_down();
    use_backend(nullptr);
    return 0;
}
