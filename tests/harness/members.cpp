#include "members.hpp"

#include <cstring>
#include <dlfcn.h>
#include <stdexcept>

namespace harness {
namespace {

constexpr Type type_of(std::string_view name) {
  return name == "32f" ? Type::f32 : name == "64f" ? Type::f64 : name == "32fc" ? Type::c32 : Type::c64;
}

constexpr Member list[] = {
#define KELVM_MEMBER(name, family, type, suffix, shape, order)                                                         \
  {#name, #family, #suffix, type_of(#type), Shape::shape, Order::order},
#include "members.def"
};

template <class From, class To> kelStatus call_as(void* function, Shape shape, const Arguments& a) {
  const auto* src1 = static_cast<const From*>(a.src1);
  const auto* src2 = static_cast<const From*>(a.src2);
  auto* dst1 = static_cast<To*>(a.dst1);
  auto* dst2 = static_cast<To*>(a.dst2);
  switch (shape) {
  case Shape::Binary:
    return reinterpret_cast<kelStatus (*)(const From*, const From*, To*, int)>(function)(src1, src2, dst1, a.len);
  case Shape::ScalarPower: {
    From value;
    std::memcpy(&value, a.scalar, sizeof value);
    return reinterpret_cast<kelStatus (*)(const From*, From, To*, int)>(function)(src1, value, dst1, a.len);
  }
  case Shape::TwoOutputs:
    return reinterpret_cast<kelStatus (*)(const From*, To*, To*, int)>(function)(src1, dst1, dst2, a.len);
  default:
    return reinterpret_cast<kelStatus (*)(const From*, To*, int)>(function)(src1, dst1, a.len);
  }
}

template <class Real, class Complex> kelStatus call_parts(void* function, const Member& m, const Arguments& a) {
  if (m.complex_source())
    return m.complex_destination() ? call_as<Complex, Complex>(function, m.shape, a)
                                   : call_as<Complex, Real>(function, m.shape, a);
  return m.complex_destination() ? call_as<Real, Complex>(function, m.shape, a)
                                 : call_as<Real, Real>(function, m.shape, a);
}

} // namespace

int Member::suffix_bits() const {
  return suffix == "exact" ? (is_float() ? 24 : 53) : std::stoi(std::string(suffix.substr(1)));
}

std::span<const Member> all_members() { return list; }

const Member* find_member(std::string_view name) {
  for (const Member& m : list)
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

void* Library::address(const Member& member) const {
  void* function = symbol(std::string(member.name).c_str());
  if (!function) throw std::runtime_error(path_ + " has no " + std::string(member.name));
  return function;
}

kelStatus Library::call(const Member& member, const Arguments& arguments) const {
  return call_at(address(member), member, arguments);
}

kelStatus call_at(void* function, const Member& member, const Arguments& arguments) {
  return member.is_float() ? call_parts<float, Complex32f>(function, member, arguments)
                           : call_parts<double, Complex64f>(function, member, arguments);
}

bool processor_runs(std::string_view build) {
  __builtin_cpu_init();
  if (build == "avx512")
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") &&
           __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vl");
  if (build == "avx2") return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
  return __builtin_cpu_supports("sse4.1");
}

} // namespace harness
