// The parsers of the forms of literals. Each of them parses the text after the '#' to its
// end, and sets the value in `out` but not the type.
#pragma once

#include <cstdint>
#include <string_view>

#include "hostkit/folding.h"
#include "hostkit/literal.h"

namespace hostkit::literal {

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }

inline bool takeIf(std::string_view& text, char c) {
  if (text.empty() || text.front() != c) return false;
  text.remove_prefix(1);
  return true;
}

// Removes leading digits of `base` from `text`, which may have single underscores between them.
LiteralError takeDigits(std::string_view& text, unsigned base, std::uint64_t& value);

// TIME, or LTIME when `isLong`.
LiteralError parseDuration(std::string_view text, bool isLong, LiteralValue& out);
// DATE, TOD or DT, whichever out.form says.
LiteralError parseCalendar(std::string_view text, LiteralValue& out);
// STRING in single quotes, or WSTRING in double quotes when `isWide`.
LiteralError parseString(std::string_view text, bool isWide, LiteralValue& out);

}  // namespace hostkit::literal
