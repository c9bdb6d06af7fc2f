#include "window/sdl_backend.h"

#include "base/code_page.h"
#include "image/tga.h"
#include "window/compose_table.h"
#include "window/event_wait.h"
#include "window/scaling.h"
#include "window/sdl_events.h"
#include "window/termination.h"

#include <SDL.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace {

constexpr const char* window_class = "karosmit";
constexpr int smallest_width = 240, smallest_height = 162;

struct WindowDeleter {
    void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
};
struct SurfaceDeleter {
    void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};
using WindowHandle = std::unique_ptr<SDL_Window, WindowDeleter>;
using SurfaceHandle = std::unique_ptr<SDL_Surface, SurfaceDeleter>;

bool is_set(const char* variable) {
    const char* value = std::getenv(variable);
    return value && *value;
}

// The window systems that the environment leads to, as a list for SDL; empty when there is none. Left to itself, SDL
// falls back on drivers that show nothing, or takes over the console.
std::string window_systems() {
    std::string list;
    if (is_set("DISPLAY")) list = "x11";
    if (is_set("XDG_RUNTIME_DIR") && (is_set("WAYLAND_DISPLAY") || is_set("WAYLAND_SOCKET")))
        list += list.empty() ? "wayland" : ",wayland";
    return list;
}

std::string one_line(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

void set_hints() {
    setenv("SDL_VIDEO_X11_WMCLASS", window_class, 1);
    setenv("SDL_VIDEO_WAYLAND_WMCLASS", window_class, 1);
    SDL_SetHint(SDL_HINT_APP_NAME, window_class);
    SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
    SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
}

// The X server takes finished pictures; going through OpenGL there would only delay the first one.
void choose_presentation(const std::string& driver) {
    if (driver == "x11") SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
}

// A person may choose any driver with SDL_VIDEODRIVER, even one that shows nothing.
bool start_video(std::string& error) {
    const std::string systems = window_systems();
    const bool chosen = is_set("SDL_VIDEODRIVER");
    if (systems.empty() && !chosen) {
        error = "cannot open a window: no display (neither DISPLAY nor WAYLAND_DISPLAY is set)";
        return false;
    }
    set_hints();
    if (!chosen) SDL_SetHint(SDL_HINT_VIDEODRIVER, systems.c_str());
    const SmallComposeTable read_by_connecting;
    if (SDL_Init(SDL_INIT_VIDEO) != 0) {
        const char* display = std::getenv("DISPLAY");
        error = one_line(std::string("cannot open a window on the display \"") + (display ? display : "") +
                         "\": " + SDL_GetError());
        return false;
    }
    choose_presentation(SDL_GetCurrentVideoDriver());
    return true;
}

class SdlBackend : public Backend {
public:
    explicit SdlBackend(std::string icon_path) : icon_path_(std::move(icon_path)) {}
    SdlBackend(const SdlBackend&) = delete;
    SdlBackend& operator=(const SdlBackend&) = delete;
    ~SdlBackend() override;

    bool open(int width, int height, std::string& error) override;
    void set_title(const std::string& title) override;
    void present(const Image& picture, std::span<const Rectangle> changed) override;
    void poll(std::vector<InputEvent>& events) override;
    void wait(int milliseconds) override;
    double seconds() override;

private:
    void show_icon();
    // The surface that the window shows; null while there is none. Its placement is brought up to date.
    SDL_Surface* surface();
    void show(std::span<const Rectangle> changed);
    void show_everything();
    void draw(SDL_Surface& target, const Rectangle& area);
    void handle_window_event(const SDL_WindowEvent& event);

    std::string icon_path_;
    WindowHandle window_;
    const Image* picture_ = nullptr; // presented last
    Size picture_size_;
    Scaler scaler_{Placement{}};
    SdlEvents events_;
    bool everything_is_stale_ = true;
    bool icon_is_shown_ = false;
};

SdlBackend::~SdlBackend() {
    window_.reset();
    SDL_Quit();
}

bool SdlBackend::open(int width, int height, std::string& error) {
    if (!start_video(error)) return false;
    window_.reset(SDL_CreateWindow("", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, width, height,
                                   SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI));
    picture_size_ = {width, height};
    if (!window_ || !surface()) {
        error = one_line(std::string("cannot open a window: ") + SDL_GetError());
        return false;
    }
    SDL_SetWindowMinimumSize(window_.get(), smallest_width, smallest_height);
    SDL_StartTextInput();
    catch_termination_signals();
    events_.watch(window_.get(), {width, height});
    return true;
}

// Done once the first frame is on the screen, which it would only delay.
void SdlBackend::show_icon() {
    if (std::exchange(icon_is_shown_, true)) return;
    const ImageHandle icon = TARGALOAD(icon_path_);
    if (!icon || icon->bytes_per_pixel() != 4) return;
    const SurfaceHandle picture{SDL_CreateRGBSurfaceWithFormatFrom(icon->bytes().data(), icon->width(), icon->height(),
                                                                   32, static_cast<int>(icon->pitch()),
                                                                   SDL_PIXELFORMAT_ARGB8888)};
    if (picture) SDL_SetWindowIcon(window_.get(), picture.get());
}

void SdlBackend::set_title(const std::string& title) {
    if (window_) SDL_SetWindowTitle(window_.get(), utf8_from_code_page(title).c_str());
}

void SdlBackend::present(const Image& picture, std::span<const Rectangle> changed) {
    if (!window_) return;
    picture_ = &picture;
    show(changed);
}

SDL_Surface* SdlBackend::surface() {
    SDL_Surface* found = SDL_GetWindowSurface(window_.get());
    if (!found) return nullptr;
    const Placement placement = place_picture(picture_size_, {found->w, found->h});
    if (placement != scaler_.placement()) {
        scaler_ = Scaler(placement);
        everything_is_stale_ = true;
    }
    return found;
}

void SdlBackend::show(std::span<const Rectangle> changed) {
    SDL_Surface* target = surface();
    if (!target) return;
    if (everything_is_stale_) return show_everything();
    std::vector<SDL_Rect> updated;
    for (const Rectangle& rectangle : changed) {
        const Rectangle area = window_area(scaler_.placement(), rectangle);
        if (area.empty()) continue;
        draw(*target, area);
        updated.push_back({area.x1, area.y1, area.x2 - area.x1 + 1, area.y2 - area.y1 + 1});
    }
    if (!updated.empty()) SDL_UpdateWindowSurfaceRects(window_.get(), updated.data(), static_cast<int>(updated.size()));
}

void SdlBackend::show_everything() {
    SDL_Surface* target = surface();
    if (!target || !picture_) return;
    const Placement& placement = scaler_.placement();
    const bool has_borders = placement.width < target->w || placement.height < target->h;
    if (has_borders) SDL_FillRect(target, nullptr, SDL_MapRGB(target->format, 0, 0, 0));
    draw(*target, window_area(placement, {0, 0, picture_size_.width - 1, picture_size_.height - 1}));
    SDL_UpdateWindowSurface(window_.get());
    everything_is_stale_ = false;
}

bool takes_words(const SDL_Surface& target) {
    return target.format->format == SDL_PIXELFORMAT_RGB888 || target.format->format == SDL_PIXELFORMAT_ARGB8888;
}

std::span<std::uint32_t> words_of(SDL_Surface& target) {
    const auto count = static_cast<std::size_t>(target.pitch) / 4 * static_cast<std::size_t>(target.h);
    return {static_cast<std::uint32_t*>(target.pixels), count};
}

void SdlBackend::draw(SDL_Surface& target, const Rectangle& area) {
    if (takes_words(target)) {
        if (SDL_LockSurface(&target) != 0) return;
        scaler_.draw(*picture_, area, words_of(target), static_cast<std::size_t>(target.pitch) / 4);
        SDL_UnlockSurface(&target);
        return;
    }
    // A display of another depth: by way of a surface of this one.
    const SurfaceHandle between{SDL_CreateRGBSurfaceWithFormat(0, target.w, target.h, 32, SDL_PIXELFORMAT_RGB888)};
    if (!between) return;
    scaler_.draw(*picture_, area, words_of(*between), static_cast<std::size_t>(between->pitch) / 4);
    SDL_Rect part{area.x1, area.y1, area.x2 - area.x1 + 1, area.y2 - area.y1 + 1};
    SDL_Rect place = part;
    SDL_BlitSurface(between.get(), &part, &target, &place);
}

void SdlBackend::handle_window_event(const SDL_WindowEvent& event) {
    switch (event.event) {
    case SDL_WINDOWEVENT_SHOWN:
    case SDL_WINDOWEVENT_EXPOSED:
    case SDL_WINDOWEVENT_RESIZED:
    case SDL_WINDOWEVENT_SIZE_CHANGED:
    case SDL_WINDOWEVENT_RESTORED:
    case SDL_WINDOWEVENT_DISPLAY_CHANGED: everything_is_stale_ = true; break;
    default: break;
    }
}

void SdlBackend::poll(std::vector<InputEvent>& events) {
    if (!window_) return;
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0) {
        if (event.type == SDL_WINDOWEVENT) handle_window_event(event.window);
        events_.translate(event, events);
    }
    events_.finish(events);
    if (everything_is_stale_) show_everything();
    if (picture_) show_icon();
    if (termination_asked()) events.emplace_back().kind = InputEvent::Kind::close_request;
}

void SdlBackend::wait(int milliseconds) {
    if (window_) wait_for_event(window_.get(), milliseconds);
}

double SdlBackend::seconds() {
    return static_cast<double>(SDL_GetPerformanceCounter()) / static_cast<double>(SDL_GetPerformanceFrequency());
}

} // namespace

std::unique_ptr<Backend> make_sdl_backend(const std::string& icon_path) {
    return std::make_unique<SdlBackend>(icon_path);
}
