#include "status.hpp"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace reference {
namespace {

bool any_of(std::string_view family, std::initializer_list<std::string_view> families) {
  return std::find(families.begin(), families.end(), family) != families.end();
}

} // namespace

bool warns(const harness::Function& function) {
  const bool real = function.type == harness::Type::f32 || function.type == harness::Type::f64;
  if (any_of(function.family,
             {"Add", "Sub", "Sqr", "Conj", "Ceil", "Floor", "Trunc", "Round", "Rint", "NearbyInt", "Modf"}))
    return false;
  return real ? !any_of(function.family, {"Mul", "Abs"}) : function.family != "Sqrt";
}

Underflow underflow_of(const harness::Function& function) {
  if (!warns(function) || function.complex_destination()) return Underflow::never;
  if (any_of(function.family, {"Abs", "Div", "Inv", "Pow3o2", "Hypot"})) return Underflow::exact;
  return any_of(function.family, {"Exp", "Pow", "Powx", "Atan2", "Erfc", "CdfNorm"}) ? Underflow::result
                                                                                     : Underflow::never;
}

kelStatus due_status(const harness::Function& function, const Arguments& arguments, const double* values, int count) {
  if (!warns(function)) return kelStatusOk;
  const double* p = arguments.parts;
  const bool power = any_of(function.family, {"Pow", "Powx"}), zero_base = power && p[0] == 0 && p[1] == 0;
  if (zero_base && function.complex_source()) {
    if (p[2] > 0 || (p[2] == 0 && p[3] == 0)) return kelStatusOk;
    return p[2] < 0 && p[3] == 0 ? kelStatusSingularity : kelStatusDomain;
  }
  if (function.family == "Div" && p[2] == 0 && p[3] == 0)
    return p[0] == 0 && p[1] == 0 ? kelStatusDomain : kelStatusSingularity;
  const auto among = [&](auto condition) { return std::any_of(values, values + count, condition); };
  const bool pole = zero_base || (function.family == "Inv" && p[0] == 0) ||
                    any_of(function.family, {"InvSqrt", "InvCbrt", "Ln", "Log10", "Log1p", "Atan", "Atanh", "ErfInv",
                                             "ErfcInv", "CdfNormInv"});
  if (among([](double v) { return std::isinf(v); })) return pole ? kelStatusSingularity : kelStatusOverflow;
  if (among([](double v) { return std::isnan(v); })) return kelStatusDomain;
  if (function.name == "kelsExp_64f_A50" && p[0] <= -0x1.6232bdd7abcd1p9) return kelStatusUnderflow; // a little early
  const double smallest_normal = function.is_float() ? 0x1p-126 : 0x1p-1022;
  const auto tiny = [&](double v) { return std::fabs(v) < smallest_normal && (v != 0 || p[0] != 0); };
  return underflow_of(function) != Underflow::never && among(tiny) ? kelStatusUnderflow : kelStatusOk;
}

} // namespace reference
