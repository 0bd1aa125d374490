#include <cstdio>
#include <kelvm/kelvm.hpp>
#include <vector>

int main() {
  const std::vector x{0.0, 1.0, -2.5, 1000.0};
  std::vector<double> y(x.size());
  kelvm::status status = kelvm::exp(x, y);

  for (std::size_t i = 0; i < x.size(); ++i) std::printf("exp(%g) = %.17g\n", x[i], y[i]);
  std::puts(to_string(status));
}
