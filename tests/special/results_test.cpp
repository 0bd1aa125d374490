// The rows of results.txt, each alone and among others.
#include "special.hpp"

#include <fstream>
#include <map>
#include <numbers>
#include <sstream>
#include <stdexcept>

namespace {

using special::Row, special::Value;

Value value(const std::string& word, bool is_float) {
  constexpr double pi = std::numbers::pi;
  static const std::map<std::string, double> angles = {
      {"pi", pi}, {"pi/2", pi / 2}, {"pi/4", pi / 4}, {"3pi/4", 3 * pi / 4}};
  if (word == "nan") return special::any_nan;
  if (word == "-nan") return special::default_nan;
  const bool minus = word.starts_with('-');
  if (const auto angle = angles.find(word.substr(minus)); angle != angles.end())
    return driver::rounded(is_float, minus ? -angle->second : angle->second);
  char* end = nullptr;
  const Value number =
      word.starts_with('#') ? special::bits(std::strtoull(&word[1], &end, 16)) : Value(std::strtod(word.c_str(), &end));
  if (*end != '\0') throw std::invalid_argument("not a number: " + word);
  return number;
}

/// The functions that a word names: one in full, or those of a family and its types ("Exp:32f,64f").
std::vector<harness::Function> named(const std::string& word) {
  const std::size_t colon = word.find(':');
  if (colon == std::string::npos) return {*harness::find_function(word)};
  std::vector<harness::Function> found;
  std::istringstream types(word.substr(colon + 1));
  for (std::string type; std::getline(types, type, ',');) {
    const std::size_t before = found.size();
    const std::string stem = "kels" + word.substr(0, colon) + "_" + type;
    for (const harness::Function& f : harness::all_functions())
      if (f.name == stem || f.name.starts_with(stem + "_")) found.push_back(f);
    if (found.size() == before) throw std::invalid_argument("no functions " + stem);
  }
  return found;
}

/// "sources -> results [warning] [raising flag]"
Row row(const std::string& line, bool is_float) {
  static const std::map<std::string, kelStatus> warnings = {{"domain", kelStatusDomain},
                                                            {"singularity", kelStatusSingularity},
                                                            {"overflow", kelStatusOverflow},
                                                            {"underflow", kelStatusUnderflow}};
  static const std::map<std::string, unsigned> flags = {
      {"none", 0}, {"invalid", driver::invalid}, {"overflow", driver::overflow}, {"underflow", driver::underflow}};
  Row row;
  std::istringstream words(line);
  std::vector<Value>* parts = &row.source;
  for (std::string word; words >> word;)
    if (word == "->") {
      parts = &row.result;
    } else if (const auto warning = warnings.find(word); warning != warnings.end()) {
      row.status = warning->second;
    } else if (word == "raising") {
      words >> word;
      row.flags = flags.at(word);
    } else {
      parts->push_back(value(word, is_float));
    }
  return row;
}

TEST(Results, AreThoseOfTheTable) {
  std::ifstream file(KELVM_RESULTS);
  std::vector<harness::Function> functions;
  int number = 0, rows = 0;
  for (std::string line; std::getline(file, line);) {
    SCOPED_TRACE("results.txt:" + std::to_string(++number));
    if (line.empty() || line.starts_with('#')) continue;
    if (line.starts_with(' ')) {
      for (const harness::Function& f : functions) special::check_row(f, row(line, f.is_float()));
      ++rows;
      continue;
    }
    functions.clear();
    std::istringstream words(line);
    for (std::string word; words >> word;)
      for (const harness::Function& f : named(word)) functions.push_back(f);
  }
  EXPECT_GT(rows, 0) << "no rows in " << KELVM_RESULTS;
}

} // namespace
