// Minimax polynomials by the exchange algorithm of Remez, in 113-bit arithmetic, for functions that are given through
// MPFR. Every step is deterministic: the coefficients come out the same, bit for bit, on every machine.
#pragma once

#include "emit.hpp"

#include <cmath>
#include <functional>
#include <numbers>
#include <utility>
#include <vector>

using Quad = __float128;

inline Quad magnitude(Quad x) { return x < 0 ? -x : x; }
inline Quad to_quad(const Real& x) {
  Real rest = x;
  Quad sum = 0;
  for (int i = 0; i < 3; ++i) {
    const double part = mpfr_get_d(rest, MPFR_RNDN);
    sum += part;
    mpfr_sub_d(rest, rest, part, MPFR_RNDN);
  }
  return sum;
}
inline Real to_real(Quad x) {
  Real sum;
  mpfr_set_zero(sum, 1);
  for (int i = 0; i < 3; ++i) {
    const double part = double(x);
    mpfr_add_d(sum, sum, part, MPFR_RNDN);
    x -= part;
  }
  return sum;
}

/// A function on [low, high] as its interpolant in Chebyshev points.
class Interpolant {
public:
  Interpolant(const std::function<Real(const Real&)>& f, Quad low, Quad high, int points) : low_(low), high_(high) {
    std::vector<Quad> value(points), cosine(4 * points);
    for (int k = 0; k < 4 * points; ++k) {
      Real c;
      mpfr_const_pi(c, MPFR_RNDN);
      mpfr_mul_si(c, c, k, MPFR_RNDN);
      mpfr_div_si(c, c, 2 * points, MPFR_RNDN);
      mpfr_cos(c, c, MPFR_RNDN);
      cosine[k] = to_quad(c);
    }
    for (int k = 0; k < points; ++k)
      value[k] = to_quad(f(to_real((low + high) / 2 + (high - low) / 2 * cosine[2 * k + 1])));
    for (int j = 0; j < points; ++j) {
      Quad sum = 0;
      for (int k = 0; k < points; ++k) sum += value[k] * cosine[j * (2 * k + 1) % (4 * points)];
      coefficients_.push_back(sum * (j == 0 ? 1 : 2) / points);
    }
  }
  Quad operator()(Quad x) const {
    const Quad u = ((x - low_) - (high_ - x)) / (high_ - low_);
    Quad b1 = 0, b2 = 0;
    for (int j = int(coefficients_.size()) - 1; j > 0; --j) b2 = std::exchange(b1, 2 * u * b1 - b2 + coefficients_[j]);
    return u * b1 - b2 + coefficients_[0];
  }

private:
  Quad low_, high_;
  std::vector<Quad> coefficients_;
};

struct Fit {
  std::vector<Quad> coefficients;
  double error; // largest relative error
};

/// The polynomial of that degree in t with the least relative error to f(t) on [low, high].
template <class F> inline Fit minimax(const F& f, Quad low, Quad high, int degree) {
  const int n = degree + 2;
  const Quad centre = (low + high) / 2, radius = (high - low) / 2;
  // The fit is in u, t = centre + radius u; the error is watched on a grid that is dense towards the ends.
  const int cells = 24 * n;
  std::vector<Quad> grid(cells + 1), on_grid(cells + 1);
  for (int i = 0; i <= cells; ++i) {
    grid[i] = -std::cos(std::numbers::pi * i / cells);
    on_grid[i] = f(centre + radius * grid[i]);
  }
  std::vector<Quad> u(n), c(n);
  for (int i = 0; i < n; ++i) u[i] = -std::cos(std::numbers::pi * i / (n - 1));
  const auto polynomial = [&](Quad x) {
    Quad sum = 0;
    for (int k = degree; k >= 0; --k) sum = sum * x + c[k];
    return sum;
  };
  const auto error = [&](Quad x) { return polynomial(x) / f(centre + radius * x) - 1; };
  Quad worst = 0;
  for (int round = 0; round < 30; ++round) {
    // The polynomial whose error alternates on u: sum c_k u^k + (-1)^i E f = f.
    std::vector<std::vector<Quad>> a(n, std::vector<Quad>(n + 1));
    for (int i = 0; i < n; ++i) {
      Quad power = 1;
      for (int k = 0; k <= degree; ++k, power *= u[i]) a[i][k] = power;
      a[i][n] = f(centre + radius * u[i]);
      a[i][n - 1] = i % 2 ? -a[i][n] : a[i][n];
    }
    for (int k = 0; k < n; ++k) {
      int pivot = k;
      for (int i = k + 1; i < n; ++i)
        if (magnitude(a[i][k]) > magnitude(a[pivot][k])) pivot = i;
      std::swap(a[k], a[pivot]);
      for (int i = k + 1; i < n; ++i) {
        const Quad factor = a[i][k] / a[k][k];
        for (int j = k; j <= n; ++j) a[i][j] -= factor * a[k][j];
      }
    }
    for (int k = n - 1; k >= 0; --k) {
      c[k] = a[k][n];
      for (int j = k + 1; j < n; ++j) c[k] -= a[k][j] * c[j];
      c[k] /= a[k][k];
    }
    const Quad level = magnitude(c[n - 1]);
    // The extremes between sign changes of the error take the place of u.
    std::vector<Quad> at, size;
    for (int i = 0; i <= cells; ++i) {
      const Quad e = polynomial(grid[i]) / on_grid[i] - 1;
      if (at.empty() || (e < 0) != (size.back() < 0)) {
        at.push_back(grid[i]);
        size.push_back(e);
      } else if (magnitude(e) > magnitude(size.back())) {
        at.back() = grid[i];
        size.back() = e;
      }
    }
    if (int(at.size()) != n) break; // the level is at the noise of the arithmetic
    worst = 0;
    for (int i = 0; i < n; ++i) {
      Quad x = at[i];
      for (Quad h : {Quad(0.02) / n, Quad(0.002) / n, Quad(0.002) / n}) {
        if (x - h < -1 || x + h > 1) break;
        const Quad left = error(x - h), middle = error(x), right = error(x + h);
        const Quad bend = left - 2 * middle + right;
        if (bend == 0) break;
        Quad step = h * (left - right) / (2 * bend);
        if (magnitude(step) > 8 * h) step = step < 0 ? -8 * h : 8 * h;
        x += step;
      }
      if (x < -1) x = -1;
      if (x > 1) x = 1;
      u[i] = x;
      const Quad e = magnitude(error(x));
      if (e > worst) worst = e;
    }
    if (worst - level < level * 1e-9) break;
  }
  // From u to t: sum c_k ((t - centre) / radius)^k by repeated synthetic division.
  Fit fit{{c.begin(), c.begin() + degree + 1}, double(worst)};
  std::vector<Quad>& p = fit.coefficients;
  Quad scale = 1;
  for (Quad& coefficient : p) {
    coefficient /= scale;
    scale *= radius;
  }
  if (centre != 0)
    for (int i = 0; i < degree; ++i)
      for (int k = degree - 1; k >= i; --k) p[k] -= centre * p[k + 1];
  return fit;
}

/// x to the nearest number of so many significant bits.
inline double rounded(Quad x, int significant_bits) {
  Real r = to_real(x);
  mpfr_prec_round(r, significant_bits, MPFR_RNDN);
  return to_double(r);
}
