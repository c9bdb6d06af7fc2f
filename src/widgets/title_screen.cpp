#include "widgets/title_screen.h"

#include "widgets/menu_bar.h"
#include "widgets/widgets.h"
#include "window/input.h"
#include "window/window.h"

void run_title_screen(const std::string& title) {
    {
        const ScreenLock lock;
        clear_work_area();
        draw_text(screen(), 16, 16, title, colour::title);
    }
    for (;;) {
        read_mouse();
        const std::string pressed = read_key();
        if (pressed == key::escape || pressed == key::close_window) {
            CURMENU = screen_number::quit;
            break;
        }
        if (MAINTAINMENU(false) < 0) break;
    }
    const ScreenLock lock;
    clear_work_area();
}
