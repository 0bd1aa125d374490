// The exact functions of all families, through MPFR and MPC: the judge of every accuracy figure.
#pragma once

#include "functions.hpp"

#include <memory>
#include <mpfr.h>

namespace reference {

/// The parts of one element's sources as doubles: real and imaginary part of the first, then of the second. A real
/// source has its value in the first place of its pair.
struct Arguments {
  double parts[4];
};

/// The exact function of a function's family, computed to 128 bits a result. Own one a thread.
class Exact {
public:
  static constexpr int precision = 128;

  explicit Exact(const harness::Function& function);
  ~Exact();

  /// Computes all results of one element.
  void evaluate(const Arguments& arguments);
  /// Result `i` of the last evaluation: real and imaginary part, or first and second destination.
  mpfr_srcptr result(int i) const;
  int results() const { return results_; }

  struct Workspace;

private:
  std::unique_ptr<Workspace> workspace_;
  void (*exact_)(Workspace&);
  int results_;
};

} // namespace reference
