// The parts of an integer or a bit string that a program can access: `.%X3`, `.%B1`.
#pragma once

#include <cstdint>

namespace refhost {

struct PartSize {
  char letter;
  std::uint8_t bits;
  const char* typeName;  // of the part
};

constexpr PartSize kPartSizes[] = {
    {'X', 1, "BOOL"}, {'B', 8, "BYTE"}, {'W', 16, "WORD"}, {'D', 32, "DWORD"}, {'L', 64, "LWORD"}};

// `bits` must be that of a row.
constexpr const PartSize& partSizeOf(int bits) {
  const PartSize* row = kPartSizes;
  while (row->bits != bits) ++row;
  return *row;
}

}  // namespace refhost
