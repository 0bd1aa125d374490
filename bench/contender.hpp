// Whoever is measured: a function in one of the builds, or a peer in one of the instruction sets.
#pragma once

#include "data.hpp"
#include "peers/peer.hpp"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace bench {

inline constexpr const char* sets[] = {"sse41", "avx2", "avx512"};
int rank_of(std::string_view set);

class Contender {
public:
  std::string name; // "kelvm" for ours
  std::string set;
  bool ours = false;
  bool naive = false;
  double claimed_ulp = 0;

  virtual ~Contender() = default;
  /// Ticks of the time stamp counter for `calls` calls of `call.n` elements, walking over the data of `elements`.
  virtual std::uint64_t batch(const Call& call, std::ptrdiff_t elements, long calls) const = 0;
};

/// The peers of one instruction set: every module that was built and that this processor runs.
class PeerModules {
public:
  PeerModules(const std::string& directory, std::string_view set);
  std::vector<std::unique_ptr<Contender>> contenders(const harness::Function& function) const;
  std::size_t modules() const { return modules_.size(); }

private:
  struct Module {
    std::shared_ptr<void> handle;
    const Peers* peers;
  };
  std::string set_;
  std::vector<Module> modules_;
};

/// The function in that library, or null where the library has none of that name.
std::unique_ptr<Contender> our_contender(const harness::Library& library, std::string_view set,
                                         const harness::Function& function);

} // namespace bench
