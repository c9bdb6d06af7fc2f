// The modes of the Dash manager, a file each. Speedometer and tachometer are one.
#pragma once

#include "dash/dash_state.h"

extern const DashMode driving_mode, images_mode, wheel_mode, speedometer_mode, tachometer_mode, gear_box_mode;
