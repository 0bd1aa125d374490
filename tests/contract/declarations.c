#include "declarations.h"

#include <stddef.h>

int compare_with_c(const void* pointers, size_t size);

/* Whether the pointers that C++ found are those that C finds: the names have C linkage. */
int compare_with_c(const void* pointers, size_t size) {
  const struct Functions here = functions();
  const unsigned char *a = (const unsigned char*)&here, *b = (const unsigned char*)pointers;
  size_t i;
  if (size != sizeof here) return 0;
  for (i = 0; i < size; ++i)
    if (a[i] != b[i]) return 0;
  return 1;
}
