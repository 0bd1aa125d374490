#include "functions.hpp"

#include <type_traits>

namespace {

template <class T> constexpr int parts = std::is_floating_point_v<T> ? 1 : 2;
template <class T> constexpr bool of_doubles = std::is_same_v<T, double> || std::is_same_v<T, Complex64f>;

template <class T> const T* source(const Arguments& a, int i) { return static_cast<const T*>(a.sources[i]); }
template <class T> T* destination(const Arguments& a, int i) { return static_cast<T*>(a.destinations[i]); }

// What a function is follows from its prototype: one specialisation for each shape that a prototype can have.
template <auto function, class = decltype(function)> struct Describe;

template <auto function, class From, class To> struct Describe<function, kelStatus (*)(const From*, To*, int)> {
  static kelStatus call(const Arguments& a) { return function(source<From>(a, 0), destination<To>(a, 0), a.length); }
  static constexpr Function described{nullptr, of_doubles<From>, 1, parts<From>, 1, parts<To>, false, call};
};
template <auto function, class T> struct Describe<function, kelStatus (*)(const T*, const T*, T*, int)> {
  static kelStatus call(const Arguments& a) {
    return function(source<T>(a, 0), source<T>(a, 1), destination<T>(a, 0), a.length);
  }
  static constexpr Function described{nullptr, of_doubles<T>, 2, parts<T>, 1, parts<T>, false, call};
};
template <auto function, class T> struct Describe<function, kelStatus (*)(const T*, T, T*, int)> {
  static kelStatus call(const Arguments& a) {
    return function(source<T>(a, 0), *static_cast<const T*>(a.exponent), destination<T>(a, 0), a.length);
  }
  static constexpr Function described{nullptr, of_doubles<T>, 1, parts<T>, 1, parts<T>, true, call};
};
template <auto function, class T> struct Describe<function, kelStatus (*)(const T*, T*, T*, int)> {
  static kelStatus call(const Arguments& a) {
    return function(source<T>(a, 0), destination<T>(a, 0), destination<T>(a, 1), a.length);
  }
  static constexpr Function described{nullptr, of_doubles<T>, 1, parts<T>, 2, parts<T>, false, call};
};

constexpr Function named(const char* name, Function function) {
  function.name = name;
  return function;
}

constexpr Function table[] = {
#define KELVM_MEMBER(name, family, type, suffix, shape, order) named(#name, Describe<&name>::described),
#include "members.def"
};

} // namespace

std::span<const Function> functions() { return table; }

const Function* find_function(std::string_view name) {
  for (const Function& function : table)
    if (function.name == name) return &function;
  return nullptr;
}
