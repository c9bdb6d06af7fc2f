#include "program/real_window.h"

#include "drawing/drawing.h"

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <algorithm>
#include <cstdio>
#include <fstream>

namespace {

// A window may go away at any moment; asking for it then is no reason to end the test program.
int ignore_error(Display* /*display*/, XErrorEvent* /*event*/) { return 0; }

std::pair<std::string, std::string> class_of(Display* display, Window window) {
    XClassHint hint{};
    if (XGetClassHint(display, window, &hint) == 0) return {};
    std::pair<std::string, std::string> result{hint.res_name ? hint.res_name : "",
                                               hint.res_class ? hint.res_class : ""};
    if (hint.res_name) XFree(hint.res_name);
    if (hint.res_class) XFree(hint.res_class);
    return result;
}

bool is_visible(Display* display, Window window) {
    XWindowAttributes attributes{};
    return XGetWindowAttributes(display, window, &attributes) != 0 && attributes.map_state == IsViewable;
}

Window find_window(Display* display, const std::string& window_class) {
    Window root = 0, parent = 0, *children = nullptr;
    unsigned count = 0;
    if (XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &count) == 0) return 0;
    Window found = 0;
    for (unsigned i = 0; i < count && found == 0; ++i)
        if (class_of(display, children[i]).second == window_class && is_visible(display, children[i]))
            found = children[i];
    if (children) XFree(children);
    return found;
}

// A part of a window, fetched at once.
class Picture {
public:
    Picture(Display* display, Window window, int x, int y, int width, int height)
        : image_(XGetImage(display, window, x, y, static_cast<unsigned>(width), static_cast<unsigned>(height),
                           AllPlanes, ZPixmap)) {}
    ~Picture() {
        if (image_) XDestroyImage(image_);
    }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;

    std::uint32_t pixel(int x, int y) const {
        if (!image_) return 0;
        return 0xFF000000 | static_cast<std::uint32_t>(XGetPixel(image_, x, y) & 0xFFFFFF);
    }

private:
    XImage* image_;
};

bool same_text(const Picture& picture, const std::string& text, std::uint32_t colour) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::uint8_t* rows = glyph_rows(static_cast<unsigned char>(text[i]));
        for (int y = 0; y < glyph_height; ++y)
            for (int x = 0; x < glyph_width; ++x) {
                const bool ink = (rows[y] >> (7 - x) & 1) != 0;
                if (ink != (picture.pixel(static_cast<int>(i) * glyph_width + x, y) == colour)) return false;
            }
    }
    return true;
}

} // namespace

RealWindow::RealWindow(const std::string& display) : display_(XOpenDisplay(display.c_str())) {
    XSetErrorHandler(ignore_error);
}

RealWindow::~RealWindow() {
    if (display_) XCloseDisplay(display_);
}

bool RealWindow::find(const std::string& window_class) {
    if (!display_) return false;
    if (!wait_until([&] { return (window_ = find_window(display_, window_class)) != 0; })) return false;
    XSetInputFocus(display_, window_, RevertToPointerRoot, CurrentTime);
    flush();
    return true;
}

std::string RealWindow::title() const {
    Atom type = 0;
    int format = 0;
    unsigned long count = 0, rest = 0;
    unsigned char* text = nullptr;
    XGetWindowProperty(display_, window_, XInternAtom(display_, "_NET_WM_NAME", False), 0, 1024, False, AnyPropertyType,
                       &type, &format, &count, &rest, &text);
    std::string result(text, text + (text ? count : 0));
    if (text) XFree(text);
    return result;
}

std::pair<std::string, std::string> RealWindow::window_class() const { return class_of(display_, window_); }

std::pair<int, int> RealWindow::size() const {
    XWindowAttributes attributes{};
    XGetWindowAttributes(display_, window_, &attributes);
    return {attributes.width, attributes.height};
}

bool RealWindow::has_icon() const {
    Atom type = 0;
    int format = 0;
    unsigned long count = 0, rest = 0;
    unsigned char* words = nullptr;
    XGetWindowProperty(display_, window_, XInternAtom(display_, "_NET_WM_ICON", False), 0, 2, False, XA_CARDINAL, &type,
                       &format, &count, &rest, &words);
    if (words) XFree(words);
    return count == 2;
}

void RealWindow::resize(int width, int height) {
    // All of it stays on the display, where its picture can be taken.
    XMoveResizeWindow(display_, window_, 0, 0, static_cast<unsigned>(width), static_cast<unsigned>(height));
    flush();
    wait_until([&] { return size() == std::pair{width, height}; });
}

void RealWindow::ask_to_close() {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window_;
    event.xclient.message_type = XInternAtom(display_, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(display_, "WM_DELETE_WINDOW", False));
    event.xclient.data.l[1] = CurrentTime;
    XSendEvent(display_, window_, False, NoEventMask, &event);
    flush();
}

std::uint32_t RealWindow::pixel(int x, int y) const { return Picture(display_, window_, x, y, 1, 1).pixel(0, 0); }

bool RealWindow::wait_for_pixel(int x, int y, std::uint32_t colour) const {
    return wait_until([&] { return pixel(x, y) == colour; });
}

bool RealWindow::shows_text(int x, int y, const std::string& text, std::uint32_t colour) const {
    const Picture picture(display_, window_, x, y, static_cast<int>(text.size()) * glyph_width, glyph_height);
    return same_text(picture, text, colour);
}

bool RealWindow::wait_for_text(int x, int y, const std::string& text, std::uint32_t colour) const {
    return wait_until([&] { return shows_text(x, y, text, colour); });
}

bool RealWindow::shows_picture(const Image& wanted, const Rectangle& part) const {
    const Picture picture(display_, window_, part.x1, part.y1, part.x2 - part.x1 + 1, part.y2 - part.y1 + 1);
    for (int y = part.y1; y <= part.y2; ++y)
        for (int x = part.x1; x <= part.x2; ++x)
            if (picture.pixel(x - part.x1, y - part.y1) != (0xFF000000 | wanted.pixel(x, y))) return false;
    return true;
}

void RealWindow::save_picture(const std::string& filename) const {
    const auto [width, height] = size();
    const Picture picture(display_, window_, 0, 0, width, height);
    std::ofstream file(filename, std::ios::binary);
    file << "P6\n" << width << ' ' << height << "\n255\n";
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const std::uint32_t colour = picture.pixel(x, y);
            for (const int shift : {16, 8, 0})
                file.put(static_cast<char>(colour >> shift & 0xFF));
        }
}

void RealWindow::move(int x, int y) {
    Window child = 0;
    int root_x = 0, root_y = 0;
    XTranslateCoordinates(display_, window_, DefaultRootWindow(display_), x, y, &root_x, &root_y, &child);
    XTestFakeMotionEvent(display_, -1, root_x, root_y, CurrentTime);
    flush();
}

void RealWindow::press(unsigned button) {
    XTestFakeButtonEvent(display_, button, True, CurrentTime);
    flush();
}

void RealWindow::release(unsigned button) {
    XTestFakeButtonEvent(display_, button, False, CurrentTime);
    flush();
}

void RealWindow::click(int x, int y, unsigned button) {
    move(x, y);
    press(button);
    release(button);
}

void RealWindow::wheel(int x, int y, int notches) {
    move(x, y);
    const unsigned button = notches > 0 ? 4 : 5;
    for (int i = 0; i < std::abs(notches); ++i) {
        press(button);
        release(button);
    }
}

void RealWindow::drag(const std::vector<std::pair<int, int>>& path) {
    move(path.front().first, path.front().second);
    press();
    for (const auto& [x, y] : path)
        move(x, y);
    release();
}

unsigned RealWindow::code_of(const std::string& name, bool* shifted) const {
    const KeySym symbol = XStringToKeysym(name.c_str());
    const KeyCode code = XKeysymToKeycode(display_, symbol);
    if (shifted)
        *shifted =
            XkbKeycodeToKeysym(display_, code, 0, 0) != symbol && XkbKeycodeToKeysym(display_, code, 0, 1) == symbol;
    return code;
}

void RealWindow::send_key(unsigned code, bool down) {
    XTestFakeKeyEvent(display_, code, down ? True : False, CurrentTime);
}

void RealWindow::key_down(const std::string& name) {
    send_key(code_of(name), true);
    flush();
}

void RealWindow::key_up(const std::string& name) {
    send_key(code_of(name), false);
    flush();
}

void RealWindow::key_at(unsigned code, const std::vector<std::string>& held) {
    for (const std::string& name : held)
        send_key(code_of(name), true);
    send_key(code, true);
    send_key(code, false);
    for (auto name = held.rbegin(); name != held.rend(); ++name)
        send_key(code_of(*name), false);
    flush();
}

void RealWindow::key(const std::string& name, const std::vector<std::string>& held) {
    bool shifted = false;
    const unsigned code = code_of(name, &shifted);
    std::vector<std::string> all = held;
    if (shifted) all.emplace_back("Shift_L");
    key_at(code, all);
}

void RealWindow::type(const std::string& text) {
    // The key symbols of the printable characters are their codes.
    for (const char character : text) {
        const char* name = XKeysymToString(static_cast<KeySym>(static_cast<unsigned char>(character)));
        if (name) key(name);
    }
}

void RealWindow::flush() const { XSync(display_, False); }
