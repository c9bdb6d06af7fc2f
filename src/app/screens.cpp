#include "app/screens.h"

#include "dash/dash_screen.h"
#include "editor3d/editor_screen.h"
#include "files/file_screen.h"
#include "params/parameter_screen.h"
#include "widgets/menu_bar.h"
#include "widgets/title_screen.h"

namespace {

constexpr ScreenRow rows[] = {
    {screen_number::files, "Files", [] { FILEHANDLING(file_screen_mode::cars); }, file_screen_keys},
    {screen_number::editor_3d, "3D editor", EDIT3D, editor_screen_keys},
    {screen_number::dash_manager, "Dash manager", DASHMANAGER, dash_screen_keys},
    {screen_number::parameters, "Physical parameters", EDITPARAMS, parameter_screen_keys},
};

} // namespace

std::span<const ScreenRow> screens() { return rows; }
