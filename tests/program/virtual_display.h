// An X server without a screen, for programs that need a real window.
#pragma once

#include <string>
#include <sys/types.h>

class VirtualDisplay {
public:
    // Starts Xvfb on a free display. name() is empty when that fails.
    VirtualDisplay();
    ~VirtualDisplay();
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    const std::string& name() const { return name_; } // such as ":99"

    // Stopped, it takes in no word from any program until it goes on.
    void stop() const;
    void go_on() const;
    void end(); // at once, and with it every connection

private:
    pid_t server_ = -1;
    std::string name_;
};
