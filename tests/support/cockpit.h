// Words for tests of the dashboard.
#pragma once

#include "model/gauges.h"

#include <ostream>

inline void PrintTo(const CockpitPoint& point, std::ostream* out) { *out << '(' << point.x << ", " << point.y << ')'; }
