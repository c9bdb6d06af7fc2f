// The program's one source of uniform random numbers.
#pragma once

void seed_random(double seed);
// In [0, 1).
double random_unit();
