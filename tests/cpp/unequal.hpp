// A call with ranges whose sizes differ, compiled without exceptions.
#pragma once

#include <vector>

#include "kelvm/kelvm.hpp"

kelvm::status without_exceptions(const std::vector<double>& x, std::vector<double>& y);
