// Complex Exp, Sinh, Cosh, Tanh and, by rotation, Sin, Cos, Tan: the rows of C's Annex G; symmetries and rotations bit
// for bit; results at the ends of the range.
#include "special.hpp"

#include <cmath>

namespace {

using special::default_nan, special::inf;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

special::Value source(double x) { return std::isnan(x) ? special::any_nan : special::Value(x); }
special::Value result(double x) { return std::isnan(x) ? default_nan : special::Value(x); }

struct AnnexRow {
  double x, y, re, im;
  kelStatus status = kelStatusOk;
};

void check(const char* family, const std::vector<AnnexRow>& annex) {
  for (const harness::Type type : {harness::Type::c64, harness::Type::c32}) {
    std::vector<special::Row> rows;
    for (const AnnexRow& r : annex)
      rows.push_back({{source(r.x), source(r.y)}, {result(r.re), result(r.im)}, r.status});
    special::check(family, type, rows);
  }
}

/// Rows for z and, by conjugate symmetry, for its conjugate. A NaN has no sign here.
std::vector<AnnexRow> with_conjugates(std::vector<AnnexRow> rows) {
  for (std::size_t i = 0, n = rows.size(); i < n; ++i)
    if (!std::isnan(rows[i].y)) rows.push_back({rows[i].x, -rows[i].y, rows[i].re, -rows[i].im, rows[i].status});
  return rows;
}

// The angle 2 has a negative cosine and a positive sine.
TEST(ComplexExp, AnnexG) {
  check("Exp", with_conjugates({
                   {0.0, 0.0, 1, 0.0},
                   {-0.0, 0.0, 1, 0.0},
                   {1, inf, nan, nan, kelStatusDomain},
                   {0.0, inf, nan, nan, kelStatusDomain},
                   {1, nan, nan, nan},
                   {inf, 0.0, inf, 0.0},
                   {-inf, 2, -0.0, 0.0},
                   {-inf, 0.0, 0.0, 0.0},
                   {inf, 2, -inf, inf},
                   {-inf, inf, 0.0, 0.0},
                   {inf, inf, inf, nan, kelStatusDomain},
                   {-inf, nan, 0.0, 0.0},
                   {inf, nan, inf, nan},
                   {nan, 0.0, nan, 0.0},
                   {nan, 1, nan, nan},
                   {nan, inf, nan, nan},
                   {nan, nan, nan, nan},
                   {2000, 0.0, inf, 0.0, kelStatusOverflow},
                   {2000, 2, -inf, inf, kelStatusOverflow},
                   {-2000, 2, -0.0, 0.0},
               }));
}

} // namespace
