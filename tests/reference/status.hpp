// The warning that a finite element earns.
#pragma once

#include "exact.hpp"

namespace reference {

bool warns(const harness::Function& function);

/// What has to be below the smallest normal number: nothing, the result as returned, or the exact result, which may
/// round up to it.
enum class Underflow { never, result, exact };
Underflow underflow_of(const harness::Function& function);

/// The warning for an element with those results, which are the exact ones rounded to the function's type, or those of
/// the function.
kelStatus due_status(const harness::Function& function, const Arguments& arguments, const double* values, int count);

} // namespace reference
