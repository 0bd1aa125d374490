// The tables of docs/statuses.md say which warnings every function returns, and whether a signalling NaN raises
// invalid.
#include "driver.hpp"

#include <fstream>
#include <map>
#include <set>

namespace {

using namespace driver;

enum class Signals { invalid, silent, varies };

struct Said {
  std::set<kelStatus> codes;
  Signals signals;
};
using Key = std::pair<std::string, bool>; // a family and whether its source is complex

std::vector<std::string> split(const std::string& text, const std::string& separator) {
  std::vector<std::string> parts;
  std::size_t from = 0;
  for (std::size_t to; (to = text.find(separator, from)) != std::string::npos; from = to + separator.size())
    parts.push_back(text.substr(from, to - from));
  parts.push_back(text.substr(from));
  return parts;
}

/// A row is "| families | domain | singularity | overflow | underflow | signalling NaN |".
std::map<Key, Said> page() {
  constexpr kelStatus codes[] = {kelStatusDomain, kelStatusSingularity, kelStatusOverflow, kelStatusUnderflow};
  const std::map<std::string, Signals> words = {
      {"invalid", Signals::invalid}, {"silent", Signals::silent}, {"varies", Signals::varies}};
  std::map<Key, Said> said;
  std::ifstream file(KELVM_STATUSES_PAGE);
  bool complex = false;
  for (std::string line; std::getline(file, line);) {
    if (line == "## Complex sources") complex = true;
    const std::vector<std::string> cells = split(line, "|");
    if (cells.size() != 8) continue;
    const auto word = words.find(cells[6].substr(1, cells[6].size() - 2));
    if (word == words.end()) continue; // the heading and the line below it
    Said row{{}, word->second};
    for (int i = 0; i < 4; ++i)
      if (cells[2 + i] != " ") row.codes.insert(codes[i]);
    for (const std::string& family : split(cells[1].substr(1, cells[1].size() - 2), ", "))
      said[{family, complex}] = row;
  }
  return said;
}

/// The contract tests' elements, and for two complex sources all combinations of a few parts.
std::vector<Element> elements_for(const harness::Function& m) {
  std::vector<Element> elements = all_elements(m, 3000);
  constexpr double parts[] = {0, 1, -1, -2, 1e30};
  constexpr int n = std::size(parts);
  for (int i = 0; i < n * n * n * n && m.complex_source(); ++i) {
    Element e;
    for (int place = 0, rest = i; place < 4; ++place, rest /= n) e[place] = bits_of(m.is_float(), parts[rest % n]);
    elements.push_back(e);
  }
  return elements;
}

TEST(Statuses, ArePrescribedByThePage) {
  const std::map<Key, Said> said = page();
  std::map<Key, std::set<bool>> raising; // what signalling NaNs did
  for (const harness::Function& m : harness::all_functions()) {
    const Key key{m.family, m.complex_source()};
    ASSERT_TRUE(said.contains(key)) << m.name << " has no row";
    std::set<kelStatus> returned;
    const unsigned csr = default_csr | own_rounding(m); // else the flags would not stay
    const auto note = [&](const Callable& s, const std::vector<Element>& elements) {
      const Strip strip = alone(s, elements, csr);
      for (int i = 0; i < strip.count; ++i) {
        returned.insert(strip.status[i]);
        bool signalling = false;
        const std::vector<int> places = places_of(m);
        for (int place : places) signalling |= is_signalling(m.is_float(), elements[i][place]);
        if (signalling) raising[key].insert((strip.flags[i] & invalid) != 0);
      }
    };
    if (m.shape == harness::Shape::ScalarPower)
      for (const Element& e : elements_for(*harness::find_function("kelsPow" + std::string(m.name.substr(8)))))
        note(Callable(m, e), {e});
    else
      note(Callable(m), elements_for(m));
    returned.erase(kelStatusOk);
    EXPECT_EQ(returned, said.at(key).codes) << m.name;
  }
  for (const auto& [key, row] : said) { // where it varies, it may with the compiler, too
    const std::set<bool> found = raising[key];
    EXPECT_EQ(found.contains(true), row.signals != Signals::silent) << key.first << (key.second ? ", complex" : "");
    if (row.signals == Signals::invalid) {
      EXPECT_FALSE(found.contains(false)) << key.first << (key.second ? ", complex" : "") << ": signalling NaNs";
    }
  }
}

} // namespace
