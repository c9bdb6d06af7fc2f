// The Powergear class that follows from a car's mass, and the mass that follows from a chosen class.
#pragma once

// Powergear class (0 .. 4) of a mass, by the fractional part of 65536 / mass. Mass 0 counts as class 0.
int powergear_class(int mass);

// apply false: POWERGEAR becomes the class of the current mass. apply true: the mass becomes the nearest one, the
// heavier of two equally near, whose class is POWERGEAR.
void UPDATEPG(bool apply);
