// Printing rows of polynomials, for the tables of the special functions.
#pragma once

#include "remez.hpp"

using Row = std::vector<Quad>;

struct Rows {
  std::vector<Row> of;
  double error = 0; // the largest of all rows
  void add(const Fit& fit) {
    of.push_back(fit.coefficients);
    error = std::fmax(error, fit.error);
  }
};

inline void comment(const char* text, const Rows& rows) {
  std::printf("\n/// %s Relative error of the fits 2^%.1f.\n", text, std::log2(rows.error));
}

inline void print_array(const char* type, const char* name, const std::vector<std::vector<double>>& rows) {
  const char* suffix = type[0] == 'f' ? "f" : "";
  std::printf("alignas(64) inline constexpr %s %s[%zu][%zu] = {\n", type, name, rows.size(), rows[0].size());
  for (const std::vector<double>& row : rows) {
    std::printf("{");
    for (std::size_t i = 0; i < row.size(); ++i) std::printf("%s%a%s", i ? "," : "", row[i], suffix);
    std::puts("},");
  }
  std::puts("};");
}

/// c0 and c1 as heads of so many bits and tails: c0_lo, c1_lo, c2, ..., c0_hi, c1_hi.
inline std::vector<std::vector<double>> split_rows(const Rows& rows, Quad factor, int head_bits) {
  std::vector<std::vector<double>> result;
  for (const Row& c : rows.of) {
    std::vector<double> row(c.size() + 2);
    for (std::size_t i = 0; i < c.size(); ++i) {
      const double head = i < 2 ? rounded(factor * c[i], head_bits) : 0;
      if (i < 2) row[c.size() + i] = head;
      row[i] = double(factor * c[i] - head);
    }
    result.push_back(row);
  }
  return result;
}

template <class T> inline std::vector<std::vector<double>> plain_rows(const Rows& rows, Quad factor) {
  std::vector<std::vector<double>> result;
  for (const Row& c : rows.of) {
    std::vector<double> row;
    for (Quad coefficient : c) row.push_back(double(T(factor * coefficient)));
    result.push_back(row);
  }
  return result;
}
inline void print_doubles(const char* name, const Rows& rows, Quad factor = 1) {
  print_array("double", name, plain_rows<double>(rows, factor));
}
inline void print_floats(const char* name, const Rows& rows, Quad factor = 1) {
  print_array("float", name, plain_rows<float>(rows, factor));
}
