#include "limits.hpp"

#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace accuracy {
namespace {

template <class... T> std::string format(const char* pattern, T... values) {
  char line[200];
  std::snprintf(line, sizeof line, pattern, values...);
  return line;
}

} // namespace

std::string Limit::exceeded(const reference::Statistics& s) const {
  std::string faults;
  const auto check = [&](const char* what, double value, double limit) {
    if (!(value <= limit)) faults += format("%s %.9g exceeds %g; ", what, value, limit);
  };
  if (ulp > 0) {
    check("ulp", s.ulp.value, ulp);
    check("ulp of subnormal results", s.ulp_subnormal.value, subnormal_ulp > 0 ? subnormal_ulp : ulp);
    // A tie that goes the wrong way is half an ulp off, too.
    if (ulp == 0.5 && subnormal_ulp == 0) check("results not correctly rounded:", static_cast<double>(s.misrounded), 0);
  } else if (absolute > 0) {
    check("absolute error", s.absolute.value, absolute);
  } else {
    if (!(reference::bits_of(s.relative.value) >= bits))
      faults += format("bits %.3f fall short of %g; ", reference::bits_of(s.relative.value), bits);
    if (subnormal_ulp > 0) check("ulp of subnormal results", s.ulp_subnormal.value, subnormal_ulp);
  }
  if (norm_ulp > 0) check("ulp by norm", s.norm_ulp.value, norm_ulp);
  return faults;
}

std::vector<Limit> read_limits(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error("cannot read " + path);
  std::vector<Limit> limits;
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    std::istringstream words(line.substr(0, line.find('#')));
    Limit limit;
    if (!(words >> limit.function)) continue;
    std::string key;
    double value;
    bool understood = true;
    while (words >> key) {
      understood = understood && words >> value && value > 0;
      if (key == "ulp")
        limit.ulp = value;
      else if (key == "bits")
        limit.bits = value;
      else if (key == "absolute")
        limit.absolute = value;
      else if (key == "subnormal")
        limit.subnormal_ulp = value;
      else if (key == "norm")
        limit.norm_ulp = value;
      else if (key == "within")
        limit.within = value;
      else
        understood = false;
    }
    if (!understood || (limit.ulp > 0) + (limit.bits > 0) + (limit.absolute > 0) != 1)
      throw std::runtime_error(path + ":" + std::to_string(number) + ": not a limit: " + line);
    limits.push_back(limit);
  }
  return limits;
}

const Limit* find_limit(const std::vector<Limit>& limits, std::string_view function) {
  for (const Limit& limit : limits)
    if (limit.function == function) return &limit;
  return nullptr;
}

std::string limit_fault(const std::vector<Limit>& limits, const harness::Function& function,
                        const reference::Statistics& statistics) {
  const Limit* limit = find_limit(limits, function.name);
  return limit ? limit->exceeded(statistics) : "has no row in the limits table";
}

} // namespace accuracy
