// The type that fits at the cursor.
#pragma once

#include "refhost/editor/names_at.h"

namespace refhost {

struct Wanted {
  PlaceType type;      // of the operand; not known where any fits
  PlaceType fieldsOf;  // what has the field that begins at the cursor, in an initial value
};

Wanted wantedAt(const NamesAt& names);

enum class Fit : std::uint8_t { Exact, Possible, Within, No };

// Whether a value of the one type can be used as it is where the other one is expected. Possible
// stands for a conversion without loss, and for types that are not known; Within for a type that
// has parts.
Fit fits(const PlaceType& type, const PlaceType& expected);

}  // namespace refhost
