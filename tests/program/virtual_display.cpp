#include "program/virtual_display.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// The server writes the number of the display that it found free, and a line feed.
std::string read_line(int descriptor) {
    std::string line;
    char character = 0;
    while (read(descriptor, &character, 1) == 1 && character != '\n')
        line += character;
    return line;
}

[[noreturn]] void run_server(int number_goes_to) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int nowhere = open("/dev/null", O_RDWR);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    const std::string descriptor = std::to_string(number_goes_to);
    execlp("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", "2000x1400x24", "-nolisten", "tcp",
           "-noreset", static_cast<char*>(nullptr));
    _exit(127);
}

} // namespace

VirtualDisplay::VirtualDisplay() {
    int ends[2];
    if (pipe(ends) != 0) return;
    server_ = fork();
    if (server_ == 0) {
        close(ends[0]);
        run_server(ends[1]);
    }
    close(ends[1]);
    const std::string number = read_line(ends[0]);
    close(ends[0]);
    if (!number.empty()) name_ = ":" + number;
}

void VirtualDisplay::stop() const { kill(server_, SIGSTOP); }

void VirtualDisplay::go_on() const { kill(server_, SIGCONT); }

void VirtualDisplay::end() {
    if (server_ <= 0) return;
    kill(server_, SIGTERM);
    waitpid(server_, nullptr, 0);
    server_ = -1;
}

VirtualDisplay::~VirtualDisplay() { end(); }
