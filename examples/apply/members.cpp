#include "members.hpp"

#include <type_traits>

namespace {

template <class T> constexpr int parts = std::is_floating_point_v<T> ? 1 : 2;
template <class T> constexpr bool of_doubles = std::is_same_v<T, double> || std::is_same_v<T, Complex64f>;

template <class T> const T* source(const Arguments& a, int i) { return static_cast<const T*>(a.sources[i]); }
template <class T> T* destination(const Arguments& a, int i) { return static_cast<T*>(a.destinations[i]); }

// What a member is follows from its prototype: one specialisation for each shape that a prototype can have.
template <auto Function, class = decltype(Function)> struct Describe;

template <auto Function, class From, class To> struct Describe<Function, kelStatus (*)(const From*, To*, int)> {
  static kelStatus call(const Arguments& a) { return Function(source<From>(a, 0), destination<To>(a, 0), a.length); }
  static constexpr Member member{nullptr, of_doubles<From>, 1, parts<From>, 1, parts<To>, false, call};
};
template <auto Function, class T> struct Describe<Function, kelStatus (*)(const T*, const T*, T*, int)> {
  static kelStatus call(const Arguments& a) {
    return Function(source<T>(a, 0), source<T>(a, 1), destination<T>(a, 0), a.length);
  }
  static constexpr Member member{nullptr, of_doubles<T>, 2, parts<T>, 1, parts<T>, false, call};
};
template <auto Function, class T> struct Describe<Function, kelStatus (*)(const T*, T, T*, int)> {
  static kelStatus call(const Arguments& a) {
    return Function(source<T>(a, 0), *static_cast<const T*>(a.exponent), destination<T>(a, 0), a.length);
  }
  static constexpr Member member{nullptr, of_doubles<T>, 1, parts<T>, 1, parts<T>, true, call};
};
template <auto Function, class T> struct Describe<Function, kelStatus (*)(const T*, T*, T*, int)> {
  static kelStatus call(const Arguments& a) {
    return Function(source<T>(a, 0), destination<T>(a, 0), destination<T>(a, 1), a.length);
  }
  static constexpr Member member{nullptr, of_doubles<T>, 1, parts<T>, 2, parts<T>, false, call};
};

constexpr Member named(const char* name, Member member) {
  member.name = name;
  return member;
}

constexpr Member table[] = {
#define KELVM_MEMBER(name, family, type, suffix, shape, order) named(#name, Describe<&name>::member),
#include "members.def"
};

} // namespace

std::span<const Member> members() { return table; }

const Member* find_member(std::string_view name) {
  for (const Member& member : table)
    if (member.name == name) return &member;
  return nullptr;
}
