// Inverse error functions and the normal distribution. The inverses start from a long double estimate x0 and follow the
// Taylor series of the inverse function at erf(x0):
//   x = x0 + w + x0 w^2 + (1 + 4 x0^2) w^3/3 + ...,   w = sqrt(pi)/2 exp(x0^2) (erf(x) - erf(x0))
// (L. Carlitz, The inverse of the error function, 1963). With u = 2 x0 w or w below 2^-40, which is checked, the terms
// left out are below 2^-150; a worse estimate is refined by a second turn.
#include "workspace.hpp"

#include <boost/math/special_functions/erf.hpp>

namespace reference {
namespace {

using W = Exact::Workspace;
constexpr mpfr_rnd_t near = MPFR_RNDN;

// Boost answers with an infinity where its estimate fails, and does not throw.
using Quiet = boost::math::policies::policy<boost::math::policies::domain_error<boost::math::policies::ignore_error>,
                                            boost::math::policies::overflow_error<boost::math::policies::ignore_error>>;

// out = the x with Function(x) = target, Function = mpfr_erf or mpfr_erfc; target positive. x0 is the estimate.
template <auto Function> void refine(W& w, mpfr_ptr out, mpfr_srcptr target, long double estimate) {
  auto& [x0, f, scale, square, term, sum] = w.t;
  mpfr_set_ld(x0, estimate, near);
  for (int turn = 0; turn < 20; ++turn) {
    mpfr_sqr(square, x0, near);
    Function(f, x0, near);
    if (Function == static_cast<int (*)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t)>(mpfr_erf))
      mpfr_sub(f, target, f, near);
    else
      mpfr_sub(f, f, target, near);
    mpfr_exp(scale, square, near);
    mpfr_mul(f, f, scale, near);
    mpfr_const_pi(scale, near);
    mpfr_sqrt(scale, scale, near);
    mpfr_div_2ui(scale, scale, 1, near);
    mpfr_mul(f, f, scale, near); // w

    mpfr_mul_2ui(sum, square, 2, near);
    mpfr_add_ui(sum, sum, 1, near);
    mpfr_div_ui(sum, sum, 3, near);
    mpfr_mul(sum, sum, f, near);
    mpfr_add(sum, sum, x0, near);
    mpfr_mul(sum, sum, f, near);
    mpfr_mul(sum, sum, f, near);
    mpfr_add(sum, sum, f, near); // x - x0

    // Size of u (or of w relative to x0, where x0 is small) decides whether the series was good enough.
    mpfr_mul(term, x0, sum, near);
    const bool near_enough = mpfr_zero_p(sum) || (mpfr_get_exp(term) < -40 && mpfr_get_exp(sum) < -40);
    mpfr_add(x0, x0, sum, near);
    if (near_enough) break;
  }
  mpfr_set(out, x0, near);
}

// x with erf(x) = y, 0 < y <= 1/2
void erf_inverse(W& w, mpfr_ptr out, mpfr_srcptr y) {
  if (mpfr_get_exp(y) < -100) { // sqrt(pi)/2 y, the next term being y^3
    mpfr_const_pi(w.t[0], near);
    mpfr_sqrt(w.t[0], w.t[0], near);
    mpfr_div_2ui(w.t[0], w.t[0], 1, near);
    mpfr_mul(out, w.t[0], y, near);
  } else {
    refine<mpfr_erf>(w, out, y, boost::math::erf_inv(mpfr_get_ld(y, near), Quiet{}));
  }
}

// x with erfc(x) = q, 0 < q <= 1/2
void erfc_inverse(W& w, mpfr_ptr out, mpfr_srcptr q) {
  refine<mpfr_erfc>(w, out, q, boost::math::erfc_inv(mpfr_get_ld(q, near), Quiet{}));
}

// out = the x with erfc(x) = p, for every p
void erfc_inverse_whole(W& w, mpfr_ptr out, mpfr_srcptr p) {
  mpfr_t q;
  mpfr_init2(q, 64);
  if (mpfr_nan_p(p) || mpfr_cmp_ui(p, 0) < 0 || mpfr_cmp_ui(p, 2) > 0) {
    mpfr_set_nan(out);
  } else if (mpfr_zero_p(p) || mpfr_cmp_ui(p, 2) == 0) {
    mpfr_set_inf(out, mpfr_zero_p(p) ? 1 : -1);
  } else if (mpfr_cmp_d(p, 0.5) <= 0) {
    erfc_inverse(w, out, p);
  } else if (mpfr_cmp_d(p, 1.5) >= 0) {
    mpfr_ui_sub(q, 2, p, near);
    erfc_inverse(w, out, q);
    mpfr_neg(out, out, near);
  } else {
    mpfr_ui_sub(q, 1, p, near);
    const bool negative = mpfr_sgn(q) < 0;
    mpfr_abs(q, q, near);
    if (mpfr_zero_p(q))
      mpfr_set_zero(out, 1);
    else
      erf_inverse(w, out, q);
    if (negative) mpfr_neg(out, out, near);
  }
  mpfr_clear(q);
}

} // namespace

void erf_inv(W& w) {
  const mpfr_ptr y = w.x();
  const bool negative = mpfr_signbit(y);
  mpfr_abs(y, y, near);
  if (mpfr_nan_p(y) || mpfr_cmp_ui(y, 1) > 0) {
    mpfr_set_nan(w.out());
    return;
  }
  if (mpfr_zero_p(y)) {
    mpfr_set_zero(w.out(), 1);
  } else if (mpfr_cmp_d(y, 0.5) <= 0) {
    erf_inverse(w, w.out(), y);
  } else if (mpfr_cmp_ui(y, 1) == 0) {
    mpfr_set_inf(w.out(), 1);
  } else {
    mpfr_ui_sub(y, 1, y, near); // exact
    erfc_inverse(w, w.out(), y);
  }
  if (negative) mpfr_neg(w.out(), w.out(), near);
}

void erfc_inv(W& w) { erfc_inverse_whole(w, w.out(), w.x()); }

// erfc(-x/sqrt 2)/2: an argument of 192 bits, whose rounding costs at most 12 bits at the far end of the tail
void cdf_norm(W& w) {
  mpfr_sqrt_ui(w.t[0], 2, near);
  mpfr_div(w.t[0], w.x(), w.t[0], near);
  mpfr_neg(w.t[0], w.t[0], near);
  mpfr_erfc(w.out(), w.t[0], near);
  mpfr_div_2ui(w.out(), w.out(), 1, near);
}

// -sqrt 2 times the inverse of erfc at 2p
void cdf_norm_inv(W& w) {
  mpfr_mul_2ui(w.x(), w.x(), 1, near);
  erfc_inverse_whole(w, w.out(), w.x());
  if (mpfr_zero_p(w.out())) return; // +0 at 1/2
  mpfr_sqrt_ui(w.t[0], 2, near);
  mpfr_mul(w.out(), w.out(), w.t[0], near);
  mpfr_neg(w.out(), w.out(), near);
}

} // namespace reference
