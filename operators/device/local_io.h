// The ranges of the controller's local inputs and outputs, from the option "localio.addr":
// `I:0-16;Q:0-16;`.
#pragma once

#include <cstdint>
#include <string_view>

namespace vel {

class Generator;
class InternalInterface;

// The four bounds as substrings of the option's text.
struct LocalIoBounds {
  std::string_view inStart;
  std::string_view inEnd;
  std::string_view outStart;
  std::string_view outEnd;
};

// The raw addresses from `start` up to, but not including, `end`. A negative start means that
// the range is not configured.
struct LocalIoRange {
  bool isConfigured() const { return start >= 0; }
  // Compares the bounds as unsigned numbers.
  bool contains(std::uint32_t address) const;

  std::int32_t start = -1;
  std::int32_t end = -1;
};

struct LocalIoRanges {
  LocalIoRange input;
  LocalIoRange output;
};

// Splits `text`: a tag of two characters, start, "-", end, ";", and the same again for the
// outputs. The bounds need not be numbers. On a syntax error it returns false, with the bounds
// before the error set and the others unchanged. Throws std::out_of_range for the text "-" only.
bool parseLocalIoRanges(std::string_view text, LocalIoBounds& bounds);

// The same without the exception: returns false for "-".
bool readLocalIoRanges(std::string_view text, LocalIoBounds& bounds);

// The ranges of the project. A faulty text gives smaller or empty ranges.
LocalIoRanges projectLocalIo(InternalInterface* ii);

// The option's value for code generation; empty when it is not set or `gen` is null.
std::string_view localIoOption(Generator* gen);

// The decimal number at the start of `text`, after blanks, as strtoll reads it: 0 when there is
// none, the nearest limit when the number is out of range.
std::int64_t leadingNumber(std::string_view text);

}  // namespace vel
