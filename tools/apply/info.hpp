// What the library's headers and measurements say about a function.
#pragma once

#include "functions.hpp"

#include <string>

std::string describe(const Function& function);
