#include "info.hpp"

#include "documents.hpp"
#include "numbers.hpp"

#include <limits>
#include <sstream>
#include <vector>

namespace {

/// The text of a C comment, without its stars; empty lines part paragraphs.
std::string comment_text(std::string_view comment) {
  std::string text;
  std::istringstream lines{std::string(comment)};
  for (std::string line; std::getline(lines, line);) {
    const std::size_t begin = line.find_first_not_of(" */");
    const std::size_t end = line.find("*/");
    if (begin != line.npos && begin < end) text += line.substr(begin, end == line.npos ? end : end - begin);
    text += '\n';
  }
  return text;
}

/// A declaration with the comment above it and the comment that holds for its part of the header, or nothing.
std::string declaration(std::string_view header, std::string_view name) {
  const std::size_t at = header.find(" " + std::string(name) + "(");
  if (at == header.npos) return "";
  const std::size_t begin = header.rfind('\n', at) + 1, end = header.find(';', at) + 1;
  const std::string_view above = header.substr(0, begin);
  const std::size_t own = above.rfind("\n/**");
  const std::size_t declarations = above.find("KELVM_BEGIN_DECLARATIONS");
  const std::size_t part = above.rfind("\n/* ") > declarations ? above.rfind("\n/* ") : above.npos;
  const auto comment = [&](std::size_t start) {
    return comment_text(above.substr(start + 1, above.find("*/", start) + 2 - start - 1));
  };
  std::string text = std::string(header.substr(begin, end - begin)) + "\n\n" + comment(own);
  if (const std::size_t api = text.find("KELVM_API "); api != text.npos) text.erase(api, 10);
  // One of a single short line is a heading.
  if (part != above.npos && above.find("*/", part) > part + 60) text += "\n" + comment(part);
  // What the comment at the top of the header, behind its licence, says of all its functions after its first paragraph.
  const std::size_t behind_licence = header.find("*/") + 2;
  std::string top = comment_text(header.substr(behind_licence, header.find("*/", behind_licence) + 2 - behind_licence));
  const std::size_t second = top.find("\n\n", 1);
  if (second != top.npos) text += top.substr(second + 1);
  return text;
}

/// The row of a table, or of a Markdown table, that begins with a name.
std::string_view row_of(std::string_view document, const std::string& name) {
  for (const std::string& start : {"\n" + name + " ", "\n| " + name + " |"})
    if (const std::size_t at = document.find(start); at != document.npos)
      return document.substr(at + 1, document.find('\n', at + 1) - at - 1);
  return {};
}

std::vector<std::string> cells(std::string_view row) {
  std::vector<std::string> found;
  std::istringstream stream{std::string(row.substr(std::min<std::size_t>(row.size(), 2)))};
  for (std::string cell; std::getline(stream, cell, '|');) {
    cell.erase(0, cell.find_first_not_of(' '));
    found.push_back(cell.substr(0, cell.find_last_not_of(' ') + 1));
  }
  return found;
}

std::string accuracy(const std::string& name) {
  const std::string_view limit = row_of(limits_text, name);
  std::string text = "\nTested to hold: " + std::string(limit.substr(limit.find_first_not_of(' ', name.size()))) + "\n";
  const std::vector<std::string> heads = cells(row_of(accuracy_text, "Function"));
  const std::vector<std::string> figures = cells(row_of(accuracy_text, name));
  // Next to the zeros of a function an absolute error says more than a relative one; where the promise is in bits, ulps
  // of single parts say nothing.
  const bool absolute = limit.find(" absolute ") != limit.npos, in_bits = limit.find(" bits ") != limit.npos;
  const auto said = [&](const std::string& head) {
    if (head == "Max relative error") return !absolute;
    return !(absolute || in_bits) || (head != "Max ulp" && head != "Subnormal result" && head != "By norm");
  };
  for (std::size_t i = 1; i < std::min(heads.size(), figures.size()); ++i)
    if (!figures[i].empty() && said(heads[i])) text += (i == 1 ? "Measured: " : ", ") + heads[i] + " " + figures[i];
  return text + "\n";
}

/// What the function gives for special values, where it has one real source.
template <class Real> std::string special_values(const Function& function) {
  using Limits = std::numeric_limits<Real>;
  const Real infinity = Limits::infinity();
  std::string text = "\nSpecial values (source, result, status):\n";
  for (const Real x : {-infinity, -Limits::max(), Real(-1), Real(-0.0), Real(0), Limits::min(), Real(1), Limits::max(),
                       infinity, Limits::quiet_NaN()}) {
    Real results[4] = {};
    const kelStatus status =
        function.call({{&x, nullptr}, nullptr, {results, results + function.destination_parts}, 1});
    text += "  ";
    append_number(text, x);
    text.resize(std::max(text.size() + 1, text.rfind('\n') + 28), ' ');
    for (int i = 0; i < function.results(); ++i) {
      append_number(text, results[i]);
      text += ' ';
    }
    if (status != kelStatusOk) text += "  status " + std::to_string(status);
    text += '\n';
  }
  return text;
}

} // namespace

std::string describe(const Function& function) {
  std::string text;
  for (const std::string_view header : headers_text)
    if (text.empty()) text = declaration(header, function.name);
  text += accuracy(function.name);
  if (function.sources == 1 && function.source_parts == 1 && !function.takes_exponent)
    text += function.is_double ? special_values<double>(function) : special_values<float>(function);
  return text;
}
