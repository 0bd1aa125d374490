// Stands before src/simd/table.hpp in a build of the library that records which rows of its tables are met, and lists
// at its end those that never were.
#pragma once

#define lookup unrecorded_lookup
#define lookup_pair unrecorded_lookup_pair
#define lookup_row unrecorded_lookup_row
#include_next "simd/table.hpp"
#undef lookup
#undef lookup_pair
#undef lookup_row

#include <atomic>
#include <cstdio>
#include <cstring>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace kelvm::inline KELVM_BUILD {

/// What was met of the table of one name, of which each source file may have a copy.
class Rows {
public:
  Rows(std::string_view name, std::size_t count, std::size_t filling) : name_(name), met_(count), filling_(filling) {}
  ~Rows() {
    for (std::size_t i = filling_; i < met_.size(); ++i)
      if (!met_[i]) std::printf("row %zu is never met: %s\n", i, name_.c_str());
  }
  template <class I> void record(I index) {
    if constexpr (lanes<I> == 1)
      met_[index] = true;
    else
      for (int i = 0; i < lanes<I>; ++i) met_[index[i]] = true;
  }
  template <class I, int Size> void record(LowIndex<I, Size> index) { record(index.whole & ((1 << Size) - 1)); }
  template <int Half> void record(HalfIndex<Half> index) { record(index.whole); }

private:
  std::string name_;
  std::vector<std::atomic<bool>> met_;
  std::size_t filling_;
};

inline Rows& rows_of(std::string_view name, std::size_t count, std::size_t filling) {
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  static std::map<std::string_view, Rows> all;
  return all.try_emplace(name, name, count, filling).first->second;
}
/// Rows that repeat the next one fill a table up to the size of a register.
template <const auto& Table> inline std::size_t filling_rows() {
  std::size_t i = 0;
  while (i + 1 < std::size(Table) && std::memcmp(&Table[i], &Table[i + 1], sizeof(Table[i])) == 0) ++i;
  return i;
}
template <const auto& Table> inline Rows& recorded() {
  static Rows& rows = rows_of(__PRETTY_FUNCTION__, std::size(Table), filling_rows<Table>());
  return rows;
}

template <const auto& Table, class Index> inline auto lookup(Index index) {
  recorded<Table>().record(index);
  return unrecorded_lookup<Table>(index);
}
template <const auto& Table, class Index> inline auto lookup_pair(Index index) {
  recorded<Table>().record(index);
  return unrecorded_lookup_pair<Table>(index);
}
template <const auto& Table, class Index> inline auto lookup_row(Index index) {
  recorded<Table>().record(index);
  return unrecorded_lookup_row<Table>(index);
}

} // namespace kelvm::inline KELVM_BUILD
