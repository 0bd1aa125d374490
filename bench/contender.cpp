#include "contender.hpp"

#include "timing.hpp"

#include <algorithm>
#include <cstring>
#include <dlfcn.h>
#include <filesystem>
#include <stdexcept>

namespace bench {
namespace {

const char* name_of(harness::Type type) {
  constexpr const char* names[] = {"32f", "64f", "32fc", "64fc"};
  return names[int(type)];
}

/// Times call(i) for the offsets i of successive calls.
template <class F> std::uint64_t timed(std::ptrdiff_t n, std::ptrdiff_t elements, long calls, F call) {
  const std::ptrdiff_t last = elements - n;
  std::ptrdiff_t i = 0;
  const std::uint64_t start = ticks();
  for (; calls > 0; --calls) {
    call(i);
    i += n;
    if (i > last) i = 0;
  }
  return ticks() - start;
}

class PeerContender : public Contender {
public:
  PeerContender(const Peer& peer, const harness::Function& function)
      : loop_(peer.loop), source_size_(function.source_size()), destination_size_(function.destination_size()) {}

  std::uint64_t batch(const Call& c, std::ptrdiff_t elements, long calls) const override {
    const auto at = [](const void* p, std::ptrdiff_t bytes) { return static_cast<const char*>(p) + bytes; };
    const auto to = [](void* p, std::ptrdiff_t bytes) { return static_cast<char*>(p) + bytes; };
    return timed(c.n, elements, calls, [&](std::ptrdiff_t i) {
      const std::ptrdiff_t s = i * source_size_, d = i * destination_size_;
      loop_({at(c.src1, s), at(c.src2, s), c.scalar, to(c.dst1, d), to(c.dst2, d), c.n});
    });
  }

private:
  void (*loop_)(const Call&);
  std::ptrdiff_t source_size_, destination_size_;
};

class OurContender : public Contender {
public:
  OurContender(void* address, const harness::Function& function) : address_(address), function_(function) {}

  std::uint64_t batch(const Call& c, std::ptrdiff_t elements, long calls) const override {
    return function_.is_float() ? parts<float, Complex32f>(c, elements, calls)
                                : parts<double, Complex64f>(c, elements, calls);
  }

private:
  template <class Real, class Complex> std::uint64_t parts(const Call& c, std::ptrdiff_t elements, long calls) const {
    if (function_.complex_source())
      return function_.complex_destination() ? typed<Complex, Complex>(c, elements, calls)
                                             : typed<Complex, Real>(c, elements, calls);
    return function_.complex_destination() ? typed<Real, Complex>(c, elements, calls)
                                           : typed<Real, Real>(c, elements, calls);
  }
  template <class From, class To> std::uint64_t typed(const Call& c, std::ptrdiff_t elements, long calls) const {
    const auto* src1 = static_cast<const From*>(c.src1);
    const auto* src2 = static_cast<const From*>(c.src2);
    auto* dst1 = static_cast<To*>(c.dst1);
    auto* dst2 = static_cast<To*>(c.dst2);
    const int len = int(c.n);
    switch (function_.shape) {
    case harness::Shape::Binary: {
      const auto f = reinterpret_cast<kelStatus (*)(const From*, const From*, To*, int)>(address_);
      return timed(c.n, elements, calls, [&](std::ptrdiff_t i) { f(src1 + i, src2 + i, dst1 + i, len); });
    }
    case harness::Shape::ScalarPower: {
      const auto f = reinterpret_cast<kelStatus (*)(const From*, From, To*, int)>(address_);
      From value;
      std::memcpy(&value, c.scalar, sizeof value);
      return timed(c.n, elements, calls, [&](std::ptrdiff_t i) { f(src1 + i, value, dst1 + i, len); });
    }
    case harness::Shape::TwoOutputs: {
      const auto f = reinterpret_cast<kelStatus (*)(const From*, To*, To*, int)>(address_);
      return timed(c.n, elements, calls, [&](std::ptrdiff_t i) { f(src1 + i, dst1 + i, dst2 + i, len); });
    }
    default: {
      const auto f = reinterpret_cast<kelStatus (*)(const From*, To*, int)>(address_);
      return timed(c.n, elements, calls, [&](std::ptrdiff_t i) { f(src1 + i, dst1 + i, len); });
    }
    }
  }

  void* address_;
  harness::Function function_;
};

} // namespace

int rank_of(std::string_view set) { return int(std::find(std::begin(sets), std::end(sets), set) - std::begin(sets)); }

PeerModules::PeerModules(const std::string& directory, std::string_view set) : set_(set) {
  const std::string ending = "-" + set_ + ".so";
  std::vector<std::string> paths;
  std::error_code none;
  for (const auto& entry : std::filesystem::directory_iterator(directory, none))
    if (entry.path().string().ends_with(ending)) paths.push_back(entry.path());
  std::sort(paths.begin(), paths.end());
  for (const std::string& path : paths) {
    std::shared_ptr<void> handle(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL), [](void* h) {
      if (h) dlclose(h);
    });
    if (!handle) throw std::runtime_error(dlerror());
    const auto* peers = static_cast<const Peers*>(dlsym(handle.get(), "kelvm_peers"));
    if (!peers) throw std::runtime_error(path + " is no peer module");
    modules_.push_back({std::move(handle), peers});
  }
}

std::vector<std::unique_ptr<Contender>> PeerModules::contenders(const harness::Function& function) const {
  std::vector<std::unique_ptr<Contender>> found;
  for (const Module& module : modules_)
    for (int i = 0; i < module.peers->count; ++i) {
      const Peer& peer = module.peers->first[i];
      if (function.family != peer.family || std::strcmp(peer.type, name_of(function.type)) != 0) continue;
      auto contender = std::make_unique<PeerContender>(peer, function);
      contender->name = peer.name;
      contender->set = set_;
      contender->naive = peer.naive;
      contender->claimed_ulp = peer.ulp;
      found.push_back(std::move(contender));
    }
  return found;
}

std::unique_ptr<Contender> our_contender(const harness::Library& library, std::string_view set,
                                         const harness::Function& function) {
  void* address = library.symbol(std::string(function.name).c_str());
  if (!address) return nullptr;
  auto contender = std::make_unique<OurContender>(address, function);
  contender->name = "kelvm";
  contender->set = set;
  contender->ours = true;
  return contender;
}

} // namespace bench
