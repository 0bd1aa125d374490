// kelvm-exhaustive: unary float functions on all 2^32 inputs, NaNs included.
#include "limits.hpp"
#include "measure.hpp"

#include <bit>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <stdexcept>

namespace {

constexpr const char* usage = R"(usage: kelvm-exhaustive [options] --function NAME...
  --function NAME     a float function with one real source; functions of one family are quickest measured together
  --library PATH    library under test (default: the build's own)
  --from A --to B   first and last input as bit patterns (default 0 to 0xffffffff)
  --threads N       (default 2)
  --limits FILE     the limits table (default: the source tree's); exit status 1 if the function exceeds its row
)";

constexpr std::uint64_t block_length = 4096;

std::uint64_t pattern(const char* text) {
  char* end;
  const unsigned long long value = std::strtoull(text, &end, 0);
  if (*end || value > 0xffffffff) throw std::invalid_argument(std::string("not a 32-bit pattern: ") + text);
  return value;
}

int run(int argc, char** argv) {
  std::string library_path = KELVM_DEFAULT_LIBRARY, limits_path = KELVM_LIMITS;
  std::vector<harness::Function> functions;
  std::uint64_t from = 0, to = 0xffffffff;
  unsigned threads = 2;
  for (int i = 1; i < argc; i += 2) {
    const std::string option = argv[i];
    if (i + 1 == argc) throw std::invalid_argument(option + " needs a value");
    const char* value = argv[i + 1];
    if (option == "--function") {
      const harness::Function* function = harness::find_function(value);
      if (!function) throw std::invalid_argument(std::string("unknown function ") + value);
      if (!function->is_float() || function->complex_source() || function->sources() != 1 ||
          function->shape == harness::Shape::ScalarPower)
        throw std::invalid_argument(std::string(value) + " is not a float function with one real source");
      if (!functions.empty() && !accuracy::same_function(functions.front(), *function))
        throw std::invalid_argument("functions of different families");
      functions.push_back(*function);
    } else if (option == "--library")
      library_path = value;
    else if (option == "--limits")
      limits_path = value;
    else if (option == "--from")
      from = pattern(value);
    else if (option == "--to")
      to = pattern(value);
    else if (option == "--threads")
      threads = static_cast<unsigned>(pattern(value));
    else
      throw std::invalid_argument("unknown option " + option);
  }
  if (functions.empty()) throw std::invalid_argument("no function given");

  const std::uint64_t blocks = (to - from) / block_length + 1;
  // Blocks far apart follow each other: in increasing order errors may grow from one input to the next for long
  // stretches, and each new maximum is one more question to MPFR.
  std::uint64_t stride = blocks * 5 / 8 | 1;
  while (std::gcd(stride, blocks) != 1) stride += 2;
  const auto source = [&](std::uint64_t index, std::vector<reference::Arguments>& block) {
    if (index >= blocks) return false;
    const std::uint64_t first = from + index * stride % blocks * block_length;
    block.assign(std::min(block_length, to - first + 1), reference::Arguments{});
    for (std::size_t i = 0; i < block.size(); ++i)
      block[i].parts[0] = std::bit_cast<float>(static_cast<std::uint32_t>(first + i));
    return true;
  };
  const auto limits = accuracy::read_limits(limits_path);
  const harness::Library library(library_path);
  const std::vector<reference::Statistics> measured =
      accuracy::measure(library, functions, source, {threads, true, false, blocks});
  int status = 0;
  for (std::size_t i = 0; i < functions.size(); ++i) {
    std::printf("%s", accuracy::report(functions[i], measured[i]).c_str());
    std::string fault = accuracy::estimate_fault(measured[i]);
    if (fault.empty()) fault = accuracy::limit_fault(limits, functions[i], measured[i]);
    if (fault.empty()) continue;
    std::printf("FAILED %s: %s\n", std::string(functions[i].name).c_str(), fault.c_str());
    status = 1;
  }
  return status;
}

} // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::invalid_argument& error) {
    std::fprintf(stderr, "kelvm-exhaustive: %s\n%s", error.what(), usage);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "kelvm-exhaustive: %s\n", error.what());
  }
  return 2;
}
