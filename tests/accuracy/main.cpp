// kelvm-accuracy: measures functions of the library against MPFR.
#include "intervals.hpp"
#include "limits.hpp"
#include "measure.hpp"

#include <algorithm>
#include <bit>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <numeric>
#include <stdexcept>

namespace {

constexpr const char* usage = R"(usage: kelvm-accuracy [options] --function NAME | --family NAME | --all
  --library PATH     library under test (default: the build's own); may be given several times: builds for processors
                     other than this one (by the name of their directory) are left out
  --function NAME      measure this function; may be given several times
  --family NAME      every function of a family
  --all              every function
  --exhaustive       all 2^32 inputs, NaNs included, of float functions with one real source; statuses are not looked at
  --from A --to B    first and last of them as bit patterns
  --points N         random elements a function (default 1000000), beside a few thousand steps that meet every table row
  --range LO:HI      only first sources in this range
  --range2 LO:HI     the same for the second source
  --seed S           of the random inputs (default 1)
  --threads N        (default 2)
  --mpfr-only        do without the estimate that lets MPFR pass over unremarkable results
  --brief            one line a function
  --intervals N      instead of the report, for drawing: JSON, an object a line, of the largest error in each of N
                     intervals of the source; --points is shared among them
  --limits FILE      the limits table (default: the source tree's)
  --check            compare with the limits: exit status 1 if a function exceeds its row or has none
  --check-table      only see that the table has one row for every function, in list order
)";

struct Settings {
  std::string limits = KELVM_LIMITS;
  std::vector<std::string> libraries, functions, families;
  bool all = false, exhaustive = false, mpfr_only = false, brief = false, check = false, check_table = false;
  std::uint32_t from = 0, to = 0xffffffff;
  std::uint64_t points = 1000000, seed = 1;
  int intervals = 0;
  unsigned threads = 2;
  std::optional<accuracy::Range> range1, range2;
};

double number(const std::string& text) {
  char* end;
  const double value = std::strtod(text.c_str(), &end);
  if (text.empty() || *end) throw std::invalid_argument("not a number: " + text);
  return value;
}

accuracy::Range range(const std::string& text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string::npos) throw std::invalid_argument("not a range LO:HI: " + text);
  const accuracy::Range r{number(text.substr(0, colon)), number(text.substr(colon + 1))};
  if (!(r.lo <= r.hi)) throw std::invalid_argument("an empty range: " + text);
  return r;
}

std::uint64_t count(const std::string& text) {
  const double value = number(text);
  if (!(value >= 1 && value < 1e15)) throw std::invalid_argument("not a count: " + text);
  return static_cast<std::uint64_t>(value);
}

std::uint32_t pattern(const std::string& text) {
  char* end;
  const unsigned long long value = std::strtoull(text.c_str(), &end, 0);
  if (text.empty() || *end || value > 0xffffffff) throw std::invalid_argument("not a 32-bit pattern: " + text);
  return static_cast<std::uint32_t>(value);
}

Settings parse(int argc, char** argv) {
  Settings s;
  const std::map<std::string, bool*> switches = {
      {"--all", &s.all},     {"--exhaustive", &s.exhaustive}, {"--mpfr-only", &s.mpfr_only},
      {"--brief", &s.brief}, {"--check", &s.check},           {"--check-table", &s.check_table}};
  const std::map<std::string, std::function<void(const std::string&)>> values = {
      {"--library", [&](const std::string& v) { s.libraries.push_back(v); }},
      {"--limits", [&](const std::string& v) { s.limits = v; }},
      {"--function", [&](const std::string& v) { s.functions.push_back(v); }},
      {"--family", [&](const std::string& v) { s.families.push_back(v); }},
      {"--from", [&](const std::string& v) { s.from = pattern(v); }},
      {"--to", [&](const std::string& v) { s.to = pattern(v); }},
      {"--points", [&](const std::string& v) { s.points = count(v); }},
      {"--intervals", [&](const std::string& v) { s.intervals = int(std::min<std::uint64_t>(count(v), 10000)); }},
      {"--seed", [&](const std::string& v) { s.seed = count(v); }},
      {"--threads", [&](const std::string& v) { s.threads = unsigned(std::min<std::uint64_t>(count(v), 256)); }},
      {"--range", [&](const std::string& v) { s.range1 = range(v); }},
      {"--range2", [&](const std::string& v) { s.range2 = range(v); }}};
  for (int i = 1; i < argc; ++i) {
    const std::string option = argv[i];
    if (const auto found = switches.find(option); found != switches.end()) {
      *found->second = true;
    } else if (const auto with = values.find(option); with == values.end()) {
      throw std::invalid_argument("unknown option " + option);
    } else {
      if (++i == argc) throw std::invalid_argument(option + " needs a value");
      with->second(argv[i]);
    }
  }
  if (s.libraries.empty()) s.libraries.push_back(KELVM_DEFAULT_LIBRARY);
  if (s.from > s.to) throw std::invalid_argument("no patterns from --from to --to");
  return s;
}

std::vector<harness::Function> chosen_functions(const Settings& s) {
  std::vector<harness::Function> chosen;
  for (const std::string& name : s.functions) {
    const harness::Function* m = harness::find_function(name);
    if (!m) throw std::invalid_argument("unknown function " + name);
    chosen.push_back(*m);
  }
  for (const harness::Function& m : harness::all_functions())
    if (s.all || std::find(s.families.begin(), s.families.end(), m.family) != s.families.end()) chosen.push_back(m);
  for (const std::string& family : s.families)
    if (std::none_of(harness::all_functions().begin(), harness::all_functions().end(),
                     [&](const harness::Function& m) { return m.family == family; }))
      throw std::invalid_argument("unknown family " + family);
  for (const harness::Function& f : chosen)
    if (s.exhaustive &&
        (!f.is_float() || f.complex_source() || f.sources() != 1 || f.shape == harness::Shape::ScalarPower))
      throw std::invalid_argument(std::string(f.name) + " is not a float function with one real source");
  return chosen;
}

bool table_is_complete(const std::vector<accuracy::Limit>& limits) {
  const auto functions = harness::all_functions();
  for (std::size_t i = 0; i < std::max(limits.size(), functions.size()); ++i) {
    const std::string_view row = i < limits.size() ? std::string_view(limits[i].function) : "nothing";
    const std::string_view function = i < functions.size() ? functions[i].name : "nothing";
    if (row == function) continue;
    std::printf("row %zu of the limits should be %.*s, but is %.*s\n", i + 1, static_cast<int>(function.size()),
                function.data(), static_cast<int>(row.size()), row.data());
    return false;
  }
  return true;
}

constexpr std::size_t block_length = 2048;

std::vector<reference::Statistics> measure_all_floats(const harness::Library& library,
                                                      std::span<const harness::Function> functions, const Settings& s) {
  const std::uint64_t blocks = (s.to - s.from) / block_length + 1;
  // Blocks far apart follow each other: in increasing order errors may grow from one input to the next for long
  // stretches, and each new maximum is one more question to MPFR.
  std::uint64_t stride = blocks * 5 / 8 | 1;
  while (std::gcd(stride, blocks) != 1) stride += 2;
  const auto source = [&](std::uint64_t index, std::vector<reference::Arguments>& block) {
    if (index >= blocks) return false;
    const std::uint64_t first = s.from + index * stride % blocks * block_length;
    block.assign(std::min<std::uint64_t>(block_length, s.to - first + 1), reference::Arguments{});
    for (std::size_t i = 0; i < block.size(); ++i)
      block[i].parts[0] = std::bit_cast<float>(static_cast<std::uint32_t>(first + i));
    return true;
  };
  return accuracy::measure(library, functions, source, {s.threads, !s.mpfr_only, false, blocks});
}

// Block `index` depends on the seed and the index alone, so that results do not depend on the number of threads.
std::vector<reference::Statistics> measure(const harness::Library& library,
                                           std::span<const harness::Function> functions, const Settings& s,
                                           std::optional<accuracy::Range> range1) {
  const harness::Function& function = functions.front();
  const accuracy::Inputs inputs(function, range1, s.range2);
  // A scalar exponent lasts a whole block: shorter blocks try more of them.
  const std::size_t length = function.shape == harness::Shape::ScalarPower ? 64 : block_length;
  const std::uint64_t elements = inputs.steps() + s.points, blocks = (elements + length - 1) / length;
  const auto source = [&](std::uint64_t index, std::vector<reference::Arguments>& block) {
    if (index >= blocks) return false;
    block.resize(std::min<std::uint64_t>(length, elements - index * length));
    accuracy::Random random{s.seed << 40 ^ index * 0xd1342543de82ef95};
    inputs.fill(random, index * length, block);
    return true;
  };
  return accuracy::measure(library, functions, source, {s.threads, !s.mpfr_only, true, blocks});
}

// In ulps, by norm of complex results; the absolute error where that is what a function holds.
void print_intervals(const harness::Library& library, std::span<const harness::Function> functions, const Settings& s,
                     const std::vector<accuracy::Limit>& limits) {
  const accuracy::Axis axis = accuracy::axis_of(functions.front());
  const std::vector<double> bounds = axis.bounds(s.intervals);
  std::vector<std::string> errors(functions.size());
  const auto measure_of = [&](const harness::Function& function) {
    const accuracy::Limit* limit = accuracy::find_limit(limits, function.name);
    return limit && limit->absolute > 0 ? "absolute" : function.complex_destination() ? "norm" : "ulp";
  };
  for (int interval = 0; interval < s.intervals; ++interval) {
    const std::size_t length = 64, points = std::max<std::uint64_t>(s.points / s.intervals, 1),
                      blocks = (points + length - 1) / length;
    const auto source = [&](std::uint64_t index, std::vector<reference::Arguments>& block) {
      if (index >= blocks) return false;
      block.assign(std::min(length, points - index * length), reference::Arguments{});
      accuracy::Random random{s.seed << 40 ^ (interval * blocks + index) * 0xd1342543de82ef95};
      accuracy::fill(random, functions.front(), axis, {bounds[interval], bounds[interval + 1]}, block);
      return true;
    };
    const auto measured = accuracy::measure(library, functions, source, {s.threads, !s.mpfr_only, false, 0});
    for (std::size_t i = 0; i < functions.size(); ++i) {
      const std::string_view measure = measure_of(functions[i]);
      const reference::Worst& worst = measure == "absolute" ? measured[i].absolute
                                      : measure == "norm"   ? measured[i].norm_ulp
                                                            : measured[i].ulp;
      char text[32] = "null"; // JSON has no infinity
      if (std::isfinite(worst.value)) std::snprintf(text, sizeof text, "%.4g", worst.value);
      errors[i] += (interval ? ", " : "") + std::string(text);
    }
  }
  for (std::size_t i = 0; i < functions.size(); ++i)
    std::printf("{\"name\": \"%s\", \"measure\": \"%s\", \"logarithmic\": %s, \"range\": [%.17g, %.17g], \"second\": "
                "[%.17g, %.17g], \"errors\": [%s]}\n",
                std::string(functions[i].name).c_str(), measure_of(functions[i]), axis.logarithmic ? "true" : "false",
                axis.range.lo, axis.range.hi, axis.second.lo, axis.second.hi, errors[i].c_str());
  std::fflush(stdout);
}

int run(const Settings& s, const std::vector<accuracy::Limit>& limits, const std::vector<harness::Function>& functions,
        const harness::Library& library) {
  const auto within_of = [&](const harness::Function& function) {
    const accuracy::Limit* limit = accuracy::find_limit(limits, function.name);
    return s.check && limit ? limit->within : 0;
  };
  int status = 0;
  for (std::size_t first = 0, behind; first < functions.size(); first = behind) {
    const double within = within_of(functions[first]);
    for (behind = first + 1; behind < functions.size() &&
                             accuracy::same_function(functions[first], functions[behind]) &&
                             within_of(functions[behind]) == within;)
      ++behind;
    const std::span group(&functions[first], behind - first);
    if (s.intervals) {
      print_intervals(library, group, s, limits);
      continue;
    }
    const auto start = std::chrono::steady_clock::now();
    const std::vector<reference::Statistics> measured =
        s.exhaustive ? measure_all_floats(library, group, s)
                     : measure(library, group, s, within > 0 ? accuracy::Range{-within, within} : s.range1);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    for (std::size_t i = 0; i < group.size(); ++i) {
      const reference::Statistics& statistics = measured[i];
      std::printf("%s\n", s.brief ? accuracy::summary(group[i], statistics).c_str()
                                  : accuracy::report(group[i], statistics).c_str());
      std::string fault = accuracy::estimate_fault(statistics);
      if (s.check && fault.empty()) fault = accuracy::status_fault(statistics);
      if (s.check && fault.empty()) fault = accuracy::limit_fault(limits, group[i], statistics);
      if (fault.empty()) continue;
      std::printf("FAILED %s: %s\n", std::string(group[i].name).c_str(), fault.c_str());
      status = 1;
    }
    if (!s.brief)
      std::printf("%zu functions in %.1f s, %.2f million elements a second\n", group.size(), seconds,
                  static_cast<double>(measured[0].elements) / seconds / 1e6);
    std::fflush(stdout);
  }
  return status;
}

int run(Settings s) {
  const std::vector<accuracy::Limit> limits = accuracy::read_limits(s.limits);
  if (s.check_table) return table_is_complete(limits) ? 0 : 1;
  const std::vector<harness::Function> functions = chosen_functions(s);
  if (functions.empty() && s.families.empty() && !s.all) throw std::invalid_argument("no function given");
  int status = 0;
  for (const std::string& path : s.libraries) {
    if (!harness::processor_runs(std::filesystem::path(path).parent_path().filename().string())) continue;
    if (s.libraries.size() > 1) std::printf("%s\n", path.c_str());
    status |= run(s, limits, functions, harness::Library(path));
    ++s.seed; // the next library: other inputs
  }
  return status;
}

} // namespace

int main(int argc, char** argv) {
  try {
    return run(parse(argc, argv));
  } catch (const std::invalid_argument& error) {
    std::fprintf(stderr, "kelvm-accuracy: %s\n%s", error.what(), usage);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "kelvm-accuracy: %s\n", error.what());
  }
  return 2;
}
