#include "app/program.h"
#include "model/document.h"
#include "model/preview.h"

#include "base/config.h"
#include "base/random.h"
#include "base/version.h"
#include "dash/dash_screen.h"
#include "editor3d/editor_screen.h"
#include "editor3d/views.h"
#include "files/file_screen.h"
#include "formats/bitmap_file.h"
#include "formats/material_file.h"
#include "formats/palette_file.h"
#include "image/tga.h"
#include "model/items.h"
#include "params/parameter_screen.h"
#include "params/parameter_table.h"
#include "widgets/menu_bar.h"
#include "widgets/widgets.h"
#include "window/input.h"
#include "window/window.h"

namespace {

constexpr int text_columns = 120, text_rows = 40;

// Not shown yet: the first frame is the one with the menu bar.
void fill_whole_screen() { fill_box(screen(), 0, 0, screen_width - 1, screen_height - 1, colour::background); }

} // namespace

bool start_up(const std::string& invocation_path, std::string& error) {
    if (!open_screen(error)) return false;
    set_text_grid(text_columns, text_rows);
    set_window_title(std::string(program_title));
    fill_whole_screen();

    INITPARAMTARGETS();
    INIT3DWINDOWS();
    INITDASHITEMS();

    LOADCONFIG(invocation_path);
    LOADMATERIALS();
    LOADPALETTE();
    LOADVSH(PROGDIR + "default.vsh");
    seed_random(timer());
    MENUIMG = TARGALOAD(PROGDIR + "images.tga");
    lock_screen();
    MAINTAINMENU(true);
    unlock_screen_unshown(); // the first frame that a person sees is the first screen, whole
    return true;
}

void run_screens() {
    while (CURMENU != screen_number::quit) {
        switch (CURMENU) {
        case screen_number::files: FILEHANDLING(file_screen_mode::cars); break;
        case screen_number::editor_3d: EDIT3D(); break;
        case screen_number::dash_manager: DASHMANAGER(); break;
        case screen_number::parameters: EDITPARAMS(); break;
        default:
            read_mouse();
            if (read_key() == key::close_window)
                CURMENU = screen_number::quit;
            else
                MAINTAINMENU(false);
            break;
        }
    }
}

void shut_down() {
    MENUIMG.reset();
    for (int i = 1; i <= BITMAPS; ++i)
        BITMAP[i].pixels = {};
    forget_previews();
}
