#include <string.h>

#include "velrt/strings.h"

void vel_string_set(char* target, size_t size, const char* source) {
  if (size == 0) return;
  size_t length = 0;
  while (length < size - 1 && source[length] != 0) ++length;
  memmove(target, source, length);
  target[length] = 0;
}

void vel_wstring_set(u16* target, size_t units, const u16* source) {
  if (units == 0) return;
  size_t length = 0;
  while (length < units - 1 && source[length] != 0) ++length;
  memmove(target, source, length * sizeof *target);
  target[length] = 0;
}

int vel_string_compare(const char* a, const char* b) { return strcmp(a, b); }

int vel_wstring_compare(const u16* a, const u16* b) {
  while (*a != 0 && *a == *b) ++a, ++b;
  return (int)*a - (int)*b;
}
