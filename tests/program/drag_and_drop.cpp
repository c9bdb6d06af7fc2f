// The source's part of the XDND protocol: enter, position, drop, and the path when it is asked for.
#include "program/real_window.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>

#include <array>
#include <cstdio>

namespace {

constexpr long protocol_version = 5;

// A file's address, with every byte that has a meaning in it written by its number.
std::string address_of(const std::string& path) {
    std::string address = "file://";
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        std::array<char, 4> coded{};
        std::snprintf(coded.data(), coded.size(), "%%%02X", byte);
        const bool plain = byte > ' ' && byte < 127 && c != '%' && c != '?' && c != '#';
        address += plain ? std::string(1, c) : std::string(coded.data());
    }
    return address + "\r\n";
}

class DragSource {
public:
    DragSource(Display* display, Window target)
        : display_(display), target_(target),
          window_(XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 1, 1, 0, 0, 0)) {
        XSetSelectionOwner(display_, atom("XdndSelection"), window_, CurrentTime);
    }
    ~DragSource() {
        XDestroyWindow(display_, window_);
        XSync(display_, False);
    }
    DragSource(const DragSource&) = delete;
    DragSource& operator=(const DragSource&) = delete;

    bool drop(const std::string& address) {
        send("XdndEnter", protocol_version << 24, static_cast<long>(atom("text/uri-list")), 0, 0);
        send("XdndPosition", 0, middle_of_target(), CurrentTime, static_cast<long>(atom("XdndActionCopy")));
        if (!answered("XdndStatus", address)) return false;
        send("XdndDrop", 0, CurrentTime, 0, 0);
        return answered("XdndFinished", address);
    }

private:
    Atom atom(const char* name) const { return XInternAtom(display_, name, False); }

    long middle_of_target() const {
        Window child = 0;
        int x = 0, y = 0;
        XTranslateCoordinates(display_, target_, DefaultRootWindow(display_), 100, 100, &x, &y, &child);
        return static_cast<long>(x) << 16 | y;
    }
    void send(const char* message, long first, long second, long third, long fourth) {
        XEvent event{};
        event.xclient.type = ClientMessage;
        event.xclient.window = target_;
        event.xclient.message_type = atom(message);
        event.xclient.format = 32;
        event.xclient.data.l[0] = static_cast<long>(window_);
        event.xclient.data.l[1] = first;
        event.xclient.data.l[2] = second;
        event.xclient.data.l[3] = third;
        event.xclient.data.l[4] = fourth;
        XSendEvent(display_, target_, False, NoEventMask, &event);
        XSync(display_, False);
    }
    // Waits for a message of the target, and hands over the address meanwhile.
    bool answered(const char* message, const std::string& address) {
        return wait_until([&] {
            while (XPending(display_) > 0) {
                XEvent event{};
                XNextEvent(display_, &event);
                if (event.type == SelectionRequest) hand_over(event.xselectionrequest, address);
                if (event.type == ClientMessage && event.xclient.message_type == atom(message)) return true;
            }
            return false;
        });
    }
    void hand_over(const XSelectionRequestEvent& request, const std::string& address) {
        XChangeProperty(display_, request.requestor, request.property, request.target, 8, PropModeReplace,
                        reinterpret_cast<const unsigned char*>(address.data()), static_cast<int>(address.size()));
        XEvent event{};
        event.xselection.type = SelectionNotify;
        event.xselection.requestor = request.requestor;
        event.xselection.selection = request.selection;
        event.xselection.target = request.target;
        event.xselection.property = request.property;
        event.xselection.time = request.time;
        XSendEvent(display_, request.requestor, False, NoEventMask, &event);
        XSync(display_, False);
    }

    Display* const display_;
    const Window target_, window_;
};

} // namespace

bool RealWindow::drop(const std::string& path) { return DragSource(display_, window_).drop(address_of(path)); }
