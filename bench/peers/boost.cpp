// Boost.Math's inverses, in the precision of the type: what there is besides for these functions.
#include "peer.hpp"

#include <boost/math/distributions/normal.hpp>
#include <boost/math/special_functions/erf.hpp>

namespace bench {
namespace {

using namespace boost::math::policies;
using Policy =
    policy<promote_float<false>, promote_double<false>, overflow_error<ignore_error>, domain_error<ignore_error>>;

template <class T> T erf_inv(T x) { return boost::math::erf_inv(x, Policy()); }
template <class T> T erfc_inv(T x) { return boost::math::erfc_inv(x, Policy()); }
template <class T> T normal_inv(T p) { return quantile(boost::math::normal_distribution<T, Policy>(), p); }

template <class T, T (*f)(T)> void loop(const Call& call) {
  const T* x = static_cast<const T*>(call.src1);
  T* to = static_cast<T*>(call.dst1);
  for (std::ptrdiff_t i = 0; i < call.n; ++i) to[i] = f(x[i]);
}

#define BOTH(Family, function)                                                                                         \
  {Family, "64f", "boost", 0, false, loop<double, function<double>>},                                                  \
      {Family, "32f", "boost", 0, false, loop<float, function<float>>},

constexpr Peer table[] = {BOTH("ErfInv", erf_inv) BOTH("ErfcInv", erfc_inv) BOTH("CdfNormInv", normal_inv)};

} // namespace
} // namespace bench

KELVM_PEERS(bench::table)
