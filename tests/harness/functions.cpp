#include "functions.hpp"

#include <cstring>
#include <dlfcn.h>
#include <stdexcept>

namespace harness {
namespace {

constexpr Type type_of(std::string_view name) {
  return name == "32f" ? Type::f32 : name == "64f" ? Type::f64 : name == "32fc" ? Type::c32 : Type::c64;
}

constexpr Function list[] = {
#define KELVM_MEMBER(name, family, type, suffix, shape, order)                                                         \
  {#name, #family, #suffix, type_of(#type), Shape::shape, Order::order},
#include "members.def"
};

template <class From, class To> kelStatus call_as(void* address, Shape shape, const Arguments& a) {
  const auto* src1 = static_cast<const From*>(a.src1);
  const auto* src2 = static_cast<const From*>(a.src2);
  auto* dst1 = static_cast<To*>(a.dst1);
  auto* dst2 = static_cast<To*>(a.dst2);
  switch (shape) {
  case Shape::Binary:
    return reinterpret_cast<kelStatus (*)(const From*, const From*, To*, int)>(address)(src1, src2, dst1, a.len);
  case Shape::ScalarPower: {
    From value;
    std::memcpy(&value, a.scalar, sizeof value);
    return reinterpret_cast<kelStatus (*)(const From*, From, To*, int)>(address)(src1, value, dst1, a.len);
  }
  case Shape::TwoOutputs:
    return reinterpret_cast<kelStatus (*)(const From*, To*, To*, int)>(address)(src1, dst1, dst2, a.len);
  default:
    return reinterpret_cast<kelStatus (*)(const From*, To*, int)>(address)(src1, dst1, a.len);
  }
}

template <class Real, class Complex> kelStatus call_parts(void* address, const Function& m, const Arguments& a) {
  if (m.complex_source())
    return m.complex_destination() ? call_as<Complex, Complex>(address, m.shape, a)
                                   : call_as<Complex, Real>(address, m.shape, a);
  return m.complex_destination() ? call_as<Real, Complex>(address, m.shape, a)
                                 : call_as<Real, Real>(address, m.shape, a);
}

} // namespace

int Function::suffix_bits() const {
  return suffix == "exact" ? format().digits : std::stoi(std::string(suffix.substr(1)));
}

std::span<const Function> all_functions() { return list; }

const Function* find_function(std::string_view name) {
  for (const Function& m : list)
    if (m.name == name) return &m;
  return nullptr;
}

Library::Library(const std::string& path)
    : path_(path), handle_(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL), [](void* h) {
        if (h) dlclose(h);
      }) {
  if (!handle_) throw std::runtime_error(dlerror());
}

void* Library::symbol(const char* name) const { return dlsym(handle_.get(), name); }

void* Library::address(const Function& function) const {
  void* address = symbol(std::string(function.name).c_str());
  if (!address) throw std::runtime_error(path_ + " has no " + std::string(function.name));
  return address;
}

kelStatus Library::call(const Function& function, const Arguments& arguments) const {
  return call_at(address(function), function, arguments);
}

kelStatus call_at(void* address, const Function& function, const Arguments& arguments) {
  return function.is_float() ? call_parts<float, Complex32f>(address, function, arguments)
                             : call_parts<double, Complex64f>(address, function, arguments);
}

bool processor_runs(std::string_view build) {
  build = build.substr(0, build.find('_'));
  __builtin_cpu_init();
  if (build == "avx512")
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") &&
           __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vl");
  if (build == "avx2") return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
  return __builtin_cpu_supports("sse4.1");
}

} // namespace harness
