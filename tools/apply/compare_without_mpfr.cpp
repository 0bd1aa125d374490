#include "compare.hpp"

std::unique_ptr<Reference> exact_reference(const Function&) { return nullptr; }
