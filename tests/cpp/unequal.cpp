#include "unequal.hpp"

kelvm::status without_exceptions(const std::vector<double>& x, std::vector<double>& y) { return kelvm::exp(x, y); }
