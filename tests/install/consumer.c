/* A program of someone else: uses the installed library and prints which build the loader picked. */
#include <kelvm/kelvm.h>
#include <stdio.h>

int main(void) {
  const float x[5] = {1.5f, -1.5f, 2.25f, -0.0f, 8388609.0f};
  const float expected[5] = {2.0f, -2.0f, 2.0f, 0.0f, 8388609.0f};
  float y[5];
  if (kelsRound_32f(x, y, 5) != kelStatusOk || kelsRound_32f(x, y, 0) != kelStatusSizeError) return 1;
  for (int i = 0; i < 5; ++i)
    if (y[i] != expected[i]) return 1;
  printf("%.4s\n", kelvmGetLibVersion()->cpuCode);
  return 0;
}
