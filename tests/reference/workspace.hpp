// What the exact functions compute with: operands, results and temporaries that live as long as the thread.
#pragma once

#include "exact.hpp"

#include <mpc.h>

namespace reference {

struct Exact::Workspace {
  static constexpr int working_precision = 192; // room for 64 guard bits, or for the exact cube of a double

  mpc_t a, b, result;
  mpfr_t t[6];

  Workspace() {
    mpc_init2(a, 53);
    mpc_init2(b, 53);
    mpc_init2(result, precision);
    for (mpfr_t& x : t) mpfr_init2(x, working_precision);
  }
  ~Workspace() {
    mpc_clear(a);
    mpc_clear(b);
    mpc_clear(result);
    for (mpfr_t& x : t) mpfr_clear(x);
    mpfr_free_cache2(MPFR_FREE_LOCAL_CACHE);
  }
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;

  mpfr_ptr x() { return mpc_realref(a); }
  mpfr_ptr x_im() { return mpc_imagref(a); }
  mpfr_ptr y() { return mpc_realref(b); }
  mpfr_ptr out() { return mpc_realref(result); }
  mpfr_ptr out2() { return mpc_imagref(result); }
};

// No MPFR function exists for these: inverse_normal.cpp.
void erf_inv(Exact::Workspace&);
void erfc_inv(Exact::Workspace&);
void cdf_norm(Exact::Workspace&);
void cdf_norm_inv(Exact::Workspace&);

} // namespace reference
