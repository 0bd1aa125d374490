#include "exact.hpp"

#include "workspace.hpp"

#include <stdexcept>

namespace reference {
namespace {

using W = Exact::Workspace;
using ExactFunction = void (*)(W&);
constexpr mpfr_rnd_t near = MPFR_RNDN;

template <auto F> void unary(W& w) { F(w.out(), w.x(), near); }
template <auto F> void binary(W& w) { F(w.out(), w.x(), w.y(), near); }
template <auto F> void complex_unary(W& w) { F(w.result, w.a, MPC_RNDNN); }
template <auto F> void complex_binary(W& w) { F(w.result, w.a, w.b, MPC_RNDNN); }

/// Below the cut, where MPC's exact powers lie on its other side, by the conjugate.
void complex_pow(W& w) {
  const bool below = mpfr_zero_p(mpc_imagref(w.a)) && mpfr_signbit(mpc_imagref(w.a));
  const auto conjugated = [&](mpc_ptr z) {
    if (below) mpc_conj(z, z, MPC_RNDNN);
  };
  conjugated(w.a);
  conjugated(w.b);
  mpc_pow(w.result, w.a, w.b, MPC_RNDNN);
  conjugated(w.result);
}

void reciprocal(W& w) { mpfr_ui_div(w.out(), 1, w.x(), near); }

void reciprocal_sqrt(W& w) {
  if (mpfr_zero_p(w.x()))
    reciprocal(w); // an infinity with the sign of the zero
  else
    mpfr_rec_sqrt(w.out(), w.x(), near);
}

void reciprocal_cbrt(W& w) {
  mpfr_cbrt(w.t[0], w.x(), near);
  mpfr_ui_div(w.out(), 1, w.t[0], near);
}

void power_two_thirds(W& w) {
  mpfr_sqr(w.t[0], w.x(), near); // exact
  mpfr_cbrt(w.out(), w.t[0], near);
}

void power_three_halves(W& w) {
  mpfr_pow_ui(w.t[0], w.x(), 3, near); // exact
  if (mpfr_zero_p(w.t[0])) mpfr_set_zero(w.t[0], 1);
  mpfr_sqrt(w.out(), w.t[0], near);
}

// Halfway cases away from zero; every zero is positive.
void round_away(W& w) {
  mpfr_round(w.out(), w.x());
  if (mpfr_zero_p(w.out())) mpfr_set_zero(w.out(), 1);
}

void complex_abs(W& w) { mpfr_hypot(w.out(), w.x(), w.x_im(), near); }

void cis(W& w) { mpfr_sin_cos(w.out2(), w.out(), w.x(), near); }

void multiply_by_conjugate(W& w) {
  mpc_conj(w.b, w.b, MPC_RNDNN);
  mpc_mul(w.result, w.a, w.b, MPC_RNDNN);
}

// Exponential, circular and hyperbolic functions of z = x + iy, from real ones without cancellation: MPC takes seconds
// for some of these arguments. Hyperbolic arguments are cut where every result has long left the range of double.
void cut(mpfr_ptr x) {
  constexpr double far = 1e6;
  if (mpfr_cmp_d(x, far) > 0) mpfr_set_d(x, far, near);
  if (mpfr_cmp_d(x, -far) < 0) mpfr_set_d(x, -far, near);
}

void complex_exp(W& w) {
  cut(w.x());
  mpfr_exp(w.t[0], w.x(), near);
  mpfr_sin_cos(w.t[1], w.t[2], w.x_im(), near);
  mpfr_mul(w.out(), w.t[0], w.t[2], near);
  mpfr_mul(w.out2(), w.t[0], w.t[1], near);
}

// t[0..3] = sine and cosine of one part, hyperbolic sine and cosine of the other
void circular_and_hyperbolic(W& w, mpfr_ptr circular, mpfr_ptr hyperbolic) {
  cut(hyperbolic);
  mpfr_sin_cos(w.t[0], w.t[1], circular, near);
  mpfr_sinh_cosh(w.t[2], w.t[3], hyperbolic, near);
}

void complex_sin(W& w) {
  circular_and_hyperbolic(w, w.x(), w.x_im());
  mpfr_mul(w.out(), w.t[0], w.t[3], near);
  mpfr_mul(w.out2(), w.t[1], w.t[2], near);
}

void complex_cos(W& w) {
  circular_and_hyperbolic(w, w.x(), w.x_im());
  mpfr_mul(w.out(), w.t[1], w.t[3], near);
  mpfr_mul(w.out2(), w.t[0], w.t[2], near);
  mpfr_neg(w.out2(), w.out2(), near);
}

void complex_sinh(W& w) {
  circular_and_hyperbolic(w, w.x_im(), w.x());
  mpfr_mul(w.out(), w.t[2], w.t[1], near);
  mpfr_mul(w.out2(), w.t[3], w.t[0], near);
}

void complex_cosh(W& w) {
  circular_and_hyperbolic(w, w.x_im(), w.x());
  mpfr_mul(w.out(), w.t[3], w.t[1], near);
  mpfr_mul(w.out2(), w.t[2], w.t[0], near);
}

// circular = sin cos / (cos^2 + sinh^2), hyperbolic = sinh cosh / (cos^2 + sinh^2): the parts of tan z, and of tanh z
// with the parts of z exchanged
void tangent_parts(W& w, mpfr_ptr circular, mpfr_ptr hyperbolic) {
  mpfr_sqr(w.t[4], w.t[1], near);
  mpfr_sqr(w.t[5], w.t[2], near);
  mpfr_add(w.t[4], w.t[4], w.t[5], near);
  mpfr_mul(w.t[0], w.t[0], w.t[1], near);
  mpfr_mul(w.t[2], w.t[2], w.t[3], near);
  mpfr_div(circular, w.t[0], w.t[4], near);
  mpfr_div(hyperbolic, w.t[2], w.t[4], near);
}

void complex_tan(W& w) {
  circular_and_hyperbolic(w, w.x(), w.x_im());
  tangent_parts(w, w.out(), w.out2());
}

void complex_tanh(W& w) {
  circular_and_hyperbolic(w, w.x_im(), w.x());
  tangent_parts(w, w.out2(), w.out());
}

// Inverse functions of z = x + iy by sums of terms that are never negative (T. E. Hull, T. F. Fairgrieve, P. T. P.
// Tang, "Implementing the complex arcsine and arccosine functions using exception handling", 1997). MPC evaluates them
// by logarithms that cancel: about a millisecond for parts far apart, and next to some arguments its precision grows
// until gigabytes are used up.

// t[0], t[1] = |x|, |y|
void magnitudes(W& w, mpfr_srcptr x, mpfr_srcptr y) {
  mpfr_abs(w.t[0], x, near);
  mpfr_abs(w.t[1], y, near);
}

// rest = hypot(distance, y) - distance without cancellation, for distance >= 0; y in t[1]
void beyond_distance(W& w, mpfr_ptr rest, mpfr_srcptr distance) {
  if (mpfr_zero_p(w.t[1])) return static_cast<void>(mpfr_set_zero(rest, 1));
  mpfr_hypot(rest, distance, w.t[1], near);
  mpfr_add(rest, rest, distance, near);
  mpfr_div(rest, w.t[1], rest, near);
  mpfr_mul(rest, rest, w.t[1], near);
}

// For asin(x + iy): t[0], t[3] = numerator and denominator of tan |re|, t[1] = |im|. With r, s = |z + 1|, |z - 1| and
// a = (r + s) / 2 they are |x|, sqrt((a - |x|) (a + |x|)) and log(a + sqrt(a^2 - 1)).
void arc_sine_parts(W& w, mpfr_srcptr x, mpfr_srcptr y) {
  magnitudes(w, x, y);
  mpfr_add_ui(w.t[2], w.t[0], 1, near);
  beyond_distance(w, w.t[3], w.t[2]); // r - (|x| + 1)
  mpfr_sub_ui(w.t[4], w.t[0], 1, near);
  const bool beyond_one = mpfr_sgn(w.t[4]) > 0;
  mpfr_abs(w.t[4], w.t[4], near);
  beyond_distance(w, w.t[5], w.t[4]); // s - ||x| - 1|
  // a - 1 and a - |x|: the distance enters the one where |x| > 1, else the other
  mpfr_add(w.t[3], w.t[3], w.t[5], near);
  mpfr_div_2ui(w.t[3], w.t[3], 1, near);
  mpfr_add(w.t[4], w.t[4], w.t[3], near);
  const mpfr_ptr above_one = beyond_one ? w.t[4] : w.t[3], above_x = beyond_one ? w.t[3] : w.t[4];
  mpfr_add(w.t[5], above_x, w.t[0], near); // a
  mpfr_add(w.t[2], w.t[5], w.t[0], near);
  mpfr_mul(w.t[2], w.t[2], above_x, near);
  mpfr_add_ui(w.t[5], w.t[5], 1, near);
  mpfr_mul(w.t[5], w.t[5], above_one, near);
  mpfr_sqrt(w.t[5], w.t[5], near);
  mpfr_add(w.t[5], w.t[5], above_one, near);
  mpfr_log1p(w.t[1], w.t[5], near);
  mpfr_sqrt(w.t[3], w.t[2], near);
}

void arc_sine(W& w, mpfr_srcptr x, mpfr_srcptr y, mpfr_ptr re, mpfr_ptr im) {
  arc_sine_parts(w, x, y);
  mpfr_atan2(w.t[0], w.t[0], w.t[3], near);
  mpfr_copysign(re, w.t[0], x, near);
  mpfr_copysign(im, w.t[1], y, near);
}
void complex_asin(W& w) { arc_sine(w, w.x(), w.x_im(), w.out(), w.out2()); }
void complex_asinh(W& w) { arc_sine(w, w.x_im(), w.x(), w.out2(), w.out()); }

// The angle in t[0], the logarithm in t[1].
void arc_cosine_parts(W& w) {
  arc_sine_parts(w, w.x(), w.x_im());
  mpfr_copysign(w.t[0], w.t[0], w.x(), near);
  mpfr_atan2(w.t[0], w.t[3], w.t[0], near);
}
void complex_acos(W& w) {
  arc_cosine_parts(w);
  mpfr_set(w.out(), w.t[0], near);
  mpfr_setsign(w.out2(), w.t[1], !mpfr_signbit(w.x_im()), near);
}
void complex_acosh(W& w) {
  arc_cosine_parts(w);
  mpfr_set(w.out(), w.t[1], near);
  mpfr_copysign(w.out2(), w.t[0], w.x_im(), near);
}

// re = atan2(2x, 1 - x^2 - y^2) / 2, |im| = log1p(4|y| / (x^2 + (1 - |y|)^2)) / 4
void arc_tangent(W& w, mpfr_srcptr x, mpfr_srcptr y, mpfr_ptr re, mpfr_ptr im) {
  magnitudes(w, x, y);
  mpfr_ui_sub(w.t[2], 1, w.t[1], near);
  mpfr_add_ui(w.t[3], w.t[1], 1, near);
  mpfr_fmms(w.t[3], w.t[2], w.t[3], w.t[0], w.t[0], near);
  mpfr_fmma(w.t[4], w.t[2], w.t[2], w.t[0], w.t[0], near);
  mpfr_mul_2ui(w.t[0], w.t[0], 1, near);
  mpfr_atan2(w.t[0], w.t[0], w.t[3], near);
  mpfr_div_2ui(w.t[0], w.t[0], 1, near);
  mpfr_mul_2ui(w.t[1], w.t[1], 2, near);
  mpfr_div(w.t[1], w.t[1], w.t[4], near);
  mpfr_log1p(w.t[1], w.t[1], near);
  mpfr_div_2ui(w.t[1], w.t[1], 2, near);
  mpfr_copysign(re, w.t[0], x, near);
  mpfr_copysign(im, w.t[1], y, near);
}
void complex_atan(W& w) { arc_tangent(w, w.x(), w.x_im(), w.out(), w.out2()); }
void complex_atanh(W& w) { arc_tangent(w, w.x_im(), w.x(), w.out2(), w.out()); }

struct Row {
  std::string_view family;
  ExactFunction real, complex; // by the type in the function's name; null where the family has no such function
};

constexpr Row table[] = {
    {"Add", binary<mpfr_add>, complex_binary<mpc_add>},
    {"Sub", binary<mpfr_sub>, complex_binary<mpc_sub>},
    {"Mul", binary<mpfr_mul>, complex_binary<mpc_mul>},
    {"Sqr", unary<mpfr_sqr>, nullptr},
    {"Abs", [](W& w) { mpfr_abs(w.out(), w.x(), near); }, complex_abs},
    {"Div", binary<mpfr_div>, complex_binary<mpc_div>},
    {"Inv", reciprocal, nullptr},
    {"Conj", nullptr, complex_unary<mpc_conj>},
    {"MulByConj", nullptr, multiply_by_conjugate},
    {"Ceil", [](W& w) { mpfr_ceil(w.out(), w.x()); }, nullptr},
    {"Floor", [](W& w) { mpfr_floor(w.out(), w.x()); }, nullptr},
    {"Trunc", [](W& w) { mpfr_trunc(w.out(), w.x()); }, nullptr},
    {"Round", round_away, nullptr},
    {"Rint", unary<mpfr_rint>, nullptr},
    {"NearbyInt", unary<mpfr_rint>, nullptr},
    {"Modf", [](W& w) { mpfr_modf(w.out(), w.out2(), w.x(), near); }, nullptr},
    {"Sqrt", unary<mpfr_sqrt>, complex_unary<mpc_sqrt>},
    {"InvSqrt", reciprocal_sqrt, nullptr},
    {"Cbrt", unary<mpfr_cbrt>, nullptr},
    {"InvCbrt", reciprocal_cbrt, nullptr},
    {"Pow2o3", power_two_thirds, nullptr},
    {"Pow3o2", power_three_halves, nullptr},
    {"Hypot", binary<mpfr_hypot>, nullptr},
    {"Exp", unary<mpfr_exp>, complex_exp},
    {"Expm1", unary<mpfr_expm1>, nullptr},
    {"Ln", unary<mpfr_log>, complex_unary<mpc_log>},
    {"Log10", unary<mpfr_log10>, complex_unary<mpc_log10>},
    {"Log1p", unary<mpfr_log1p>, nullptr},
    {"Pow", binary<mpfr_pow>, complex_pow},
    {"Powx", binary<mpfr_pow>, complex_pow},
    {"Sin", unary<mpfr_sin>, complex_sin},
    {"Cos", unary<mpfr_cos>, complex_cos},
    {"SinCos", [](W& w) { mpfr_sin_cos(w.out(), w.out2(), w.x(), near); }, nullptr},
    {"CIS", nullptr, cis},
    {"Tan", unary<mpfr_tan>, complex_tan},
    {"Atan", unary<mpfr_atan>, complex_atan},
    {"Atan2", binary<mpfr_atan2>, nullptr},
    {"Asin", unary<mpfr_asin>, complex_asin},
    {"Acos", unary<mpfr_acos>, complex_acos},
    {"Sinh", unary<mpfr_sinh>, complex_sinh},
    {"Cosh", unary<mpfr_cosh>, complex_cosh},
    {"Tanh", unary<mpfr_tanh>, complex_tanh},
    {"Asinh", unary<mpfr_asinh>, complex_asinh},
    {"Acosh", unary<mpfr_acosh>, complex_acosh},
    {"Atanh", unary<mpfr_atanh>, complex_atanh},
    {"Erf", unary<mpfr_erf>, nullptr},
    {"Erfc", unary<mpfr_erfc>, nullptr},
    {"ErfInv", erf_inv, nullptr},
    {"ErfcInv", erfc_inv, nullptr},
    {"CdfNorm", cdf_norm, nullptr},
    {"CdfNormInv", cdf_norm_inv, nullptr},
};

bool complex_type(const harness::Function& m) { return m.type == harness::Type::c32 || m.type == harness::Type::c64; }

} // namespace

Exact::Exact(const harness::Function& function)
    : workspace_(std::make_unique<Workspace>()), exact_(nullptr),
      results_(function.destinations() * (function.complex_destination() ? 2 : 1)) {
  for (const Row& row : table)
    if (row.family == function.family) exact_ = complex_type(function) ? row.complex : row.real;
  if (!exact_) throw std::logic_error("no exact function for " + std::string(function.name));
}

Exact::~Exact() = default;

void Exact::evaluate(const Arguments& arguments) {
  Workspace& w = *workspace_;
  mpc_set_d_d(w.a, arguments.parts[0], arguments.parts[1], MPC_RNDNN);
  mpc_set_d_d(w.b, arguments.parts[2], arguments.parts[3], MPC_RNDNN);
  exact_(w);
}

mpfr_srcptr Exact::result(int i) const { return i == 0 ? workspace_->out() : workspace_->out2(); }

} // namespace reference
