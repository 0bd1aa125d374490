#include <kelvm/loops.h>

int main(void) {
  double x[100], y[100];
  for (int i = 0; i < 100; ++i) x[i] = 0.01 * i;
  for (int i = 0; i < 100; ++i) y[i] = kelvm_exp(x[i]);
  return !(y[0] == 1 && y[50] == 0x1.a61298e1e069cp+0);
}
