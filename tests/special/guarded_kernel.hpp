// The same guarded kernel, x / 3 + 2^-60, compiled at several optimisation levels.
#pragma once

#include "kelvm/types.h"

kelStatus guarded_O1(const double* x, double* y, int len);
kelStatus guarded_O2(const double* x, double* y, int len);
kelStatus guarded_O3(const double* x, double* y, int len);
