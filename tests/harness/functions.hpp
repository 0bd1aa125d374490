// The functions list at run time, and functions called by name in a library opened by path, so that one program can
// compare the three builds.
#pragma once

#include "kelvm/types.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace harness {

enum class Type { f32, f64, c32, c64 };
enum class Shape { Unary, Binary, ScalarPower, TwoOutputs, RealToComplex, ComplexToReal };
enum class Order { CountFirst, PointersFirst };

/// A binary floating-point format. The exponent of a number x is e where 2^(e-1) <= |x| < 2^e.
struct Format {
  int digits;       // of the significand
  int exponent_min; // 2 to this power is the smallest subnormal number
  int exponent_max; // all numbers are below 2 to this power

  int exponent_normal() const { return exponent_min + digits; } // of the smallest normal number
  /// 2 to this power is an ulp of the numbers with that exponent.
  int unit(int exponent) const { return std::clamp(exponent - digits, exponent_min, exponent_max - digits); }
};

struct Function {
  std::string_view name, family, suffix; // suffix "exact" where the name has none
  Type type;                             // as in the name: CIS_32fc is c32 although its sources are floats
  Shape shape;
  Order order;

  int sources() const { return shape == Shape::Binary ? 2 : 1; }
  int destinations() const { return shape == Shape::TwoOutputs ? 2 : 1; }
  bool is_float() const { return type == Type::f32 || type == Type::c32; } // the parts are floats
  bool complex_source() const { return (type == Type::c32 || type == Type::c64) && shape != Shape::RealToComplex; }
  bool complex_destination() const { return (type == Type::c32 || type == Type::c64) && shape != Shape::ComplexToReal; }
  std::size_t part_size() const { return is_float() ? 4 : 8; }
  Format format() const { return is_float() ? Format{24, -149, 128} : Format{53, -1074, 1024}; } // of the parts
  std::size_t source_size() const { return part_size() * (complex_source() ? 2 : 1); }           // bytes an element
  std::size_t destination_size() const { return part_size() * (complex_destination() ? 2 : 1); }
  /// The number of correct bits that the suffix promises; 24 or 53 for exact functions.
  int suffix_bits() const;
};

/// Every function, in list order.
std::span<const Function> all_functions();
/// The function of that name, or null.
const Function* find_function(std::string_view name);

/// The arrays of one call, untyped. `scalar` points to the exponent of a ScalarPower function: one element.
struct Arguments {
  const void* src1 = nullptr;
  const void* src2 = nullptr;
  const void* scalar = nullptr;
  void* dst1 = nullptr;
  void* dst2 = nullptr;
  int len = 0;
};

/// One build of the library, opened by path. Throws std::runtime_error where that fails.
class Library {
public:
  explicit Library(const std::string& path);
  /// The address of an exported name, or null.
  void* symbol(const char* name) const;
  /// The address of a function. Throws std::runtime_error where the library lacks it.
  void* address(const Function& function) const;
  kelStatus call(const Function& function, const Arguments& arguments) const;
  const std::string& path() const { return path_; }

private:
  std::string path_;
  std::shared_ptr<void> handle_;
};

/// Calls the function that lies at an address.
kelStatus call_at(void* address, const Function& function, const Arguments& arguments);

/// Whether this processor can run the build of that directory name (sse41, avx2, avx512; avx2_gathers ...).
bool processor_runs(std::string_view build);

} // namespace harness
