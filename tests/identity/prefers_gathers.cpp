// In the place of src/cpu/gathers.cpp: every processor prefers gathers.
#include "cpu/gathers.hpp"

bool kelvm::prefers_gathers() { return true; }
