// kelvm._core: the functions of the library as NumPy ufuncs. Which ufuncs there are, and from which functions, is up to
// the package's functions.py; here is what all of them have in common.
#include "instructions.hpp"
#include "loops.hpp"

#define NPY_NO_DEPRECATED_API NPY_1_7_API_VERSION
#include <Python.h>
#include <numpy/arrayobject.h>
#include <numpy/ufuncobject.h>

#include <dlfcn.h>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace kelvm_python {
namespace {

using Address = void (*)();

/// A function of the library and the loop that calls it.
struct Function {
  std::string_view name;
  PyUFuncGenericFunction loop;
  int sources, destinations;
  char types[3]; // of sources and destinations
  Address address;
  Address with_scalar = nullptr; // the same function with one second operand for all elements
};

template <class T> constexpr char type_number = NPY_NOTYPE;
template <> constexpr char type_number<float> = NPY_FLOAT;
template <> constexpr char type_number<double> = NPY_DOUBLE;
template <> constexpr char type_number<Complex32f> = NPY_CFLOAT;
template <> constexpr char type_number<Complex64f> = NPY_CDOUBLE;

template <class S, class D> using Unary = kelStatus (*)(const S*, D*, int);
template <class T> using Binary = kelStatus (*)(const T*, const T*, T*, int);
template <class T> using WithScalar = kelStatus (*)(const T*, T, T*, int);
template <class T> using TwoOutputs = kelStatus (*)(const T*, T*, T*, int);

const Function& function_of(void* data) { return *static_cast<const Function*>(data); }

template <class S, class D> void unary_loop(char** args, const npy_intp* n, const npy_intp* steps, void* data) {
  const auto f = reinterpret_cast<Unary<S, D>>(function_of(data).address);
  for_each_piece<S, 1, D, 1>(args, *n, steps, [f](auto src, auto dst, int count) { f(src[0], dst[0], count); });
}

template <class T> void exp_loop(char** args, const npy_intp* n, const npy_intp* steps, void* data) {
  const auto f = reinterpret_cast<Unary<T, T>>(function_of(data).address);
  for_each_piece<T, 1, T, 1, true>(args, *n, steps, [f](auto src, auto dst, int count) {
    if (f(src[0], dst[0], count) > 0) raise_flags_of_exp(src[0], count);
  });
}

template <class T> void binary_loop(char** args, const npy_intp* n, const npy_intp* steps, void* data) {
  const auto f = reinterpret_cast<Binary<T>>(function_of(data).address);
  for_each_piece<T, 2, T, 1>(args, *n, steps, [f](auto src, auto dst, int count) { f(src[0], src[1], dst[0], count); });
}

template <class Op, class T> void instruction_loop(char** args, const npy_intp* n, const npy_intp* steps, void* data) {
  const auto call = [address = function_of(data).address](auto src, auto dst, int count) {
    if constexpr (Op::sources == 1)
      reinterpret_cast<Unary<T, T>>(address)(src[0], dst[0], count);
    else
      reinterpret_cast<Binary<T>>(address)(src[0], src[1], dst[0], count);
  };
  if (is_one_call<T, Op::sources, T, 1, false>(args, *n, steps)) [[likely]]
    one_call<T, Op::sources, T, 1>(args, *n, call);
  else
    instructions<Op, T>(args, *n, steps, call);
}

struct LoopOfFamily {
  std::string_view family;
  PyUFuncGenericFunction loop;
};

template <class T> std::vector<LoopOfFamily> instruction_loops() {
  if constexpr (!std::is_floating_point_v<T>)
    return {{"kelsAdd_", instruction_loop<Sum, T>},
            {"kelsSub_", instruction_loop<Difference, T>},
            {"kelsConj_", instruction_loop<Conjugate, T>}};
  else
    return {{"kelsAdd_", instruction_loop<Sum, T>},
            {"kelsSub_", instruction_loop<Difference, T>},
            {"kelsMul_", instruction_loop<Product, T>},
            {"kelsDiv_", instruction_loop<Quotient, T>},
            {"kelsSqr_", instruction_loop<Square, T>},
            {"kelsInv_", instruction_loop<Reciprocal, T>},
            {"kelsAbs_", instruction_loop<Absolute, T>},
            {"kelsSqrt_", instruction_loop<Root, T>},
            {"kelsCeil_", instruction_loop<Rounding<_MM_FROUND_TO_POS_INF>, T>},
            {"kelsFloor_", instruction_loop<Rounding<_MM_FROUND_TO_NEG_INF>, T>},
            {"kelsTrunc_", instruction_loop<Rounding<_MM_FROUND_TO_ZERO>, T>},
            {"kelsRint_", instruction_loop<Rounding<_MM_FROUND_CUR_DIRECTION>, T>},
            {"kelsNearbyInt_", instruction_loop<Rounding<_MM_FROUND_NEARBYINT>, T>},
            {"copy_", instruction_loop<Copy, T>}};
}

/// Whether a function of this name is one instruction, if that of full precision is. Reduced accuracies start from the
/// processor's estimates: those of doubles come with AVX-512; 21 bits of a quotient are estimated in AVX2's build
/// alone.
bool is_as_full_precision(std::string_view name) {
  const auto ends_with = [=](std::string_view suffix) { return name.ends_with(suffix); };
  if (ends_with("_A26") || ends_with("_A50")) return !has_avx512;
  if (ends_with("_A21")) return name.starts_with("kelsDiv_") && !is_build("v3");
  return !ends_with("_A11");
}

/// The loop of a function that is one instruction, else the other one.
template <class T> PyUFuncGenericFunction instruction_or(std::string_view name, PyUFuncGenericFunction otherwise) {
  if (!is_as_full_precision(name)) return otherwise;
  for (const LoopOfFamily& l : instruction_loops<T>())
    if (name.starts_with(l.family)) return l.loop;
  return otherwise;
}

template <class T> void power_loop(char** args, const npy_intp* n, const npy_intp* steps, void* data) {
  constexpr npy_intp size = sizeof(T);
  if (steps[1] != 0 || overlap({args[1], 0, size}, {args[2], steps[2], size}, *n) != Overlap::none)
    return binary_loop<T>(args, n, steps, data);
  const auto f = reinterpret_cast<WithScalar<T>>(function_of(data).with_scalar);
  T exponent;
  std::memcpy(&exponent, args[1], sizeof exponent);
  char* const rest[] = {args[0], args[2]};
  const npy_intp rest_steps[] = {steps[0], steps[2]};
  for_each_piece<T, 1, T, 1>(rest, *n, rest_steps,
                             [=](auto src, auto dst, int count) { f(src[0], exponent, dst[0], count); });
}

template <class T> void two_outputs_loop(char** args, const npy_intp* n, const npy_intp* steps, void* data) {
  const auto f = reinterpret_cast<TwoOutputs<T>>(function_of(data).address);
  for_each_piece<T, 1, T, 2>(args, *n, steps, [f](auto src, auto dst, int count) { f(src[0], dst[0], dst[1], count); });
}

/// NumPy's modf has the fractional parts first.
template <class T> void modf_loop(char** args, const npy_intp* n, const npy_intp* steps, void* data) {
  char* swapped[] = {args[0], args[2], args[1]};
  const npy_intp swapped_steps[] = {steps[0], steps[2], steps[1]};
  two_outputs_loop<T>(swapped, n, swapped_steps, data);
}

template <class S, class D> Function describe(std::string_view name, Unary<S, D> f) {
  PyUFuncGenericFunction loop = unary_loop<S, D>;
  if constexpr (std::is_same_v<S, D>) loop = instruction_or<S>(name, loop);
  if constexpr (std::is_same_v<S, D> && std::is_floating_point_v<S>)
    if (name.starts_with("kelsExp_")) loop = exp_loop<S>;
  return {name, loop, 1, 1, {type_number<S>, type_number<D>}, reinterpret_cast<Address>(f)};
}
template <class T> Function describe(std::string_view name, Binary<T> f) {
  constexpr char type = type_number<T>;
  const auto loop = name.starts_with("kelsPow_") ? power_loop<T> : instruction_or<T>(name, binary_loop<T>);
  return {name, loop, 2, 1, {type, type, type}, reinterpret_cast<Address>(f)};
}
/// Serves the function of two arrays; has no loop of its own.
template <class T> Function describe(std::string_view name, WithScalar<T> f) {
  return {name, nullptr, 0, 0, {}, reinterpret_cast<Address>(f)};
}
template <class T> Function describe(std::string_view name, TwoOutputs<T> f) {
  constexpr char type = type_number<T>;
  const auto loop = name.starts_with("kelsModf_") ? modf_loop<T> : two_outputs_loop<T>;
  return {name, loop, 1, 2, {type, type, type}, reinterpret_cast<Address>(f)};
}

/// A real number is its own conjugate.
template <class T> kelStatus copy(const T* src, T* dst, int n) {
  std::memmove(dst, src, n * sizeof(T));
  return kelStatusOk;
}

std::vector<Function> all_functions() {
  std::vector<Function> list = {
      describe("copy_32f", copy<float>),
      describe("copy_64f", copy<double>),
#define KELVM_MEMBER(name, family, type, suffix, shape, order) describe(#name, name),
#include "members.def"
  };
  for (Function& f : list) {
    if (!f.name.starts_with("kelsPow_")) continue;
    const std::string scalar = "kelsPowx_" + std::string(f.name.substr(8));
    f.with_scalar =
        std::find_if(list.begin(), list.end(), [&](const Function& g) { return g.name == scalar; })->address;
  }
  return list;
}

const std::vector<Function>& functions() {
  static const std::vector<Function> list = all_functions();
  return list;
}

const Function* find(std::string_view name) {
  for (const Function& f : functions())
    if (f.name == name && f.loop) return &f;
  return nullptr;
}

/// What a ufunc points to; lives as long as the process.
struct Definition {
  std::string name, doc;
  std::vector<PyUFuncGenericFunction> loops;
  std::vector<void*> data;
  std::vector<char> types;
};

/// ufunc(name, doc, functions, identity): the ufunc whose loops are the named functions, in the order in which NumPy
/// shall try them. They take the same number of operands. The identity is 0, 1 or None.
PyObject* make_ufunc(PyObject*, PyObject* args) {
  const char *name, *doc;
  PyObject *names, *identity_object;
  if (!PyArg_ParseTuple(args, "ssO!O", &name, &doc, &PyTuple_Type, &names, &identity_object)) return nullptr;
  int identity = PyUFunc_None;
  if (identity_object != Py_None) {
    const long value = PyLong_AsLong(identity_object);
    if (PyErr_Occurred()) return nullptr;
    identity = value == 0 ? PyUFunc_Zero : PyUFunc_One;
  }
  auto* definition = new (std::nothrow) Definition{name, doc, {}, {}, {}};
  if (!definition) return PyErr_NoMemory();
  const Function* first = nullptr;
  for (Py_ssize_t i = 0; i < PyTuple_GET_SIZE(names); ++i) {
    const char* wanted = PyUnicode_AsUTF8(PyTuple_GET_ITEM(names, i));
    const Function* f = wanted ? find(wanted) : nullptr;
    if (!first) first = f;
    if (!f || f->sources != first->sources || f->destinations != first->destinations) {
      delete definition;
      return PyErr_Occurred() ? nullptr : PyErr_Format(PyExc_ValueError, "no function %s for %s", wanted, name);
    }
    definition->loops.push_back(f->loop);
    definition->data.push_back(const_cast<Function*>(f));
    definition->types.insert(definition->types.end(), f->types, f->types + f->sources + f->destinations);
  }
  if (!first) {
    delete definition;
    return PyErr_Format(PyExc_ValueError, "no functions for %s", name);
  }
  return PyUFunc_FromFuncAndData(definition->loops.data(), definition->data.data(), definition->types.data(),
                                 int(definition->loops.size()), first->sources, first->destinations, identity,
                                 definition->name.c_str(), definition->doc.c_str(), 0);
}

/// names(): of the functions that have a loop.
PyObject* function_names(PyObject*, PyObject*) {
  PyObject* names = PySet_New(nullptr);
  for (const Function& f : functions()) {
    if (!names || !f.loop) continue;
    PyObject* name = PyUnicode_FromStringAndSize(f.name.data(), Py_ssize_t(f.name.size()));
    if (!name || PySet_Add(names, name) < 0) Py_CLEAR(names);
    Py_XDECREF(name);
  }
  return names;
}

/// version(): the record of the library that is loaded, and the path of its file.
PyObject* version(PyObject*, PyObject*) {
  const VersionRecord& r = *kelvmGetLibVersion();
  Dl_info where = {};
  dladdr(reinterpret_cast<void*>(kelvmGetLibVersion), &where);
  return Py_BuildValue("iiiiNssss", r.versionMajor, r.versionMinor, r.buildMajor, r.buildNumber,
                       PyUnicode_FromStringAndSize(r.cpuCode, Py_ssize_t(strnlen(r.cpuCode, sizeof r.cpuCode))),
                       r.libraryName, r.versionText, r.buildDate, where.dli_fname ? where.dli_fname : "");
}

PyMethodDef methods[] = {{"ufunc", make_ufunc, METH_VARARGS, nullptr},
                         {"names", function_names, METH_NOARGS, nullptr},
                         {"version", version, METH_NOARGS, nullptr},
                         {nullptr, nullptr, 0, nullptr}};

PyModuleDef module = {PyModuleDef_HEAD_INIT, "kelvm._core", nullptr, -1, methods, nullptr, nullptr, nullptr, nullptr};

} // namespace
} // namespace kelvm_python

PyMODINIT_FUNC PyInit__core() {
  import_array();
  import_umath();
  return PyModule_Create(&kelvm_python::module);
}
