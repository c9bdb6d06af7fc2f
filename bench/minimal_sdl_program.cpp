// The least that an SDL program can do: the same window, one frame, then waiting for events.
#include <SDL.h>

int main() {
    SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
    if (SDL_Init(SDL_INIT_VIDEO) != 0) return 1;
    SDL_Window* window = SDL_CreateWindow("minimal", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, 960, 648,
                                          SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI);
    SDL_Surface* surface = SDL_GetWindowSurface(window);
    SDL_FillRect(surface, nullptr, SDL_MapRGB(surface->format, 0x32, 0x14, 0x1E));
    SDL_UpdateWindowSurface(window);
    for (SDL_Event event; SDL_WaitEvent(&event) != 0;)
        if (event.type == SDL_QUIT) return 0;
    return 1;
}
