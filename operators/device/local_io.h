// The local inputs and outputs of the controller, as the option "localio.addr" gives
// them: `I:0-16;Q:0-16;`.
#pragma once

#include <cstdint>
#include <string_view>

namespace vel {

class Generator;
class InternalInterface;

// The four bounds as they are written, parts of the option's text.
struct LocalIoBounds {
  std::string_view inStart;
  std::string_view inEnd;
  std::string_view outStart;
  std::string_view outEnd;
};

// The raw addresses from `start` up to, but not including, `end`. A range whose start
// is negative is not configured.
struct LocalIoRange {
  bool isConfigured() const { return start >= 0; }
  // Compares as unsigned numbers.
  bool contains(std::uint32_t address) const;

  std::int32_t start = -1;
  std::int32_t end = -1;
};

struct LocalIoRanges {
  LocalIoRange input;
  LocalIoRange output;
};

// Splits `text`: two characters to skip, start, "-", end, ";", and the same again for
// the outputs. On false the bounds found before the fault are set and the others left.
// The bounds need not be numbers. Throws std::out_of_range for "-", and for that only.
bool parseLocalIoRanges(std::string_view text, LocalIoBounds& bounds);

// The same for callers that let no exception through: "-" is false.
bool readLocalIoRanges(std::string_view text, LocalIoBounds& bounds);

// The ranges of the project. A faulty text makes ranges that contain less than was
// meant, down to nothing at all.
LocalIoRanges projectLocalIo(InternalInterface* ii);

// The option's text for code generation; empty when it is unset or `gen` is null.
std::string_view localIoOption(Generator* gen);

// The decimal number that `text` begins with, after blanks, as atoll reads it: 0 when
// there is none. A number too large or too small gives the nearest there is.
std::int64_t leadingNumber(std::string_view text);

}  // namespace vel
