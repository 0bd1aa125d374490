#include <kelvm/kelvm.h>
#include <stdio.h>

int main(void) {
  const double x[4] = {0.0, 1.0, -2.5, 1000.0};
  double y[4];
  kelStatus status = kelsExp_64f_A53(x, y, 4);

  for (int i = 0; i < 4; ++i) printf("exp(%g) = %.17g\n", x[i], y[i]);
  puts(kelvmStatusText(status));
  return status < 0;
}
