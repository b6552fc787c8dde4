#include <iterator>
#include <limits>

#include "hostkit/literal_parts.h"

namespace hostkit::literal {

namespace {

using vel::BasicDataType;

struct DurationUnit {
  std::string_view name;
  std::uint64_t nanoseconds;
};

// From large to small, because a literal must give its units in this order.
constexpr DurationUnit kUnits[] = {
    {"d", 86'400'000'000'000},
    {"h", 3'600'000'000'000},
    {"m", 60'000'000'000},
    {"s", 1'000'000'000},
    {"ms", 1'000'000},
    {"us", 1'000},
    {"ns", 1},
};

// Converts the digits after a decimal point, in units of `unit` nanoseconds, to nanoseconds.
// Rounds down.
std::uint64_t fractionOf(std::string_view digits, std::uint64_t unit) {
  std::uint64_t sum = 0;
  for (const char c : digits) {
    if (c == '_') continue;
    unit /= 10;
    sum += unit * static_cast<std::uint64_t>(c - '0');
  }
  return sum;
}

// Removes `separator`, unless it is 0, and a number within the limits; false if they do not follow.
bool takeField(std::string_view& text, char separator, std::uint64_t low, std::uint64_t high,
               std::int64_t& field) {
  if (separator != 0 && !takeIf(text, separator)) return false;
  std::uint64_t value = 0;
  if (takeDigits(text, 10, value) != LiteralError::None || value < low || value > high)
    return false;
  field = static_cast<std::int64_t>(value);
  return true;
}

// Days from 1970-01-01 in the Gregorian calendar. Computes with years that begin in March, so
// that a leap day is the last day of its year.
std::int64_t daysFromCivil(std::int64_t year, std::int64_t month, std::int64_t day) {
  const std::int64_t y = month <= 2 ? year - 1 : year;
  const std::int64_t era = y / 400;
  const std::int64_t yearOfEra = y - era * 400;
  const std::int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

bool takeDate(std::string_view& text, std::int64_t& seconds) {
  std::int64_t year = 0;
  std::int64_t month = 0;
  std::int64_t day = 0;
  if (!takeField(text, 0, 1, 9999, year) || !takeField(text, '-', 1, 12, month) ||
      !takeField(text, '-', 1, 31, day)) {
    return false;
  }
  const std::int64_t firstOfNext =
      month == 12 ? daysFromCivil(year + 1, 1, 1) : daysFromCivil(year, month + 1, 1);
  const std::int64_t days = daysFromCivil(year, month, day);
  seconds = days * 86'400;
  return days < firstOfNext;
}

// Parses "12:30:15.25"; the seconds are optional.
bool takeClock(std::string_view& text, std::int64_t& milliseconds) {
  std::int64_t hour = 0;
  std::int64_t minute = 0;
  std::int64_t second = 0;
  if (!takeField(text, 0, 0, 23, hour) || !takeField(text, ':', 0, 59, minute)) return false;
  if (!text.empty() && !takeField(text, ':', 0, 59, second)) return false;
  milliseconds = ((hour * 60 + minute) * 60 + second) * 1000;
  if (takeIf(text, '.')) {
    const std::string_view fraction = text;
    std::uint64_t ignored = 0;
    if (takeDigits(text, 10, ignored) == LiteralError::Malformed) return false;
    milliseconds += static_cast<std::int64_t>(
        fractionOf(fraction.substr(0, fraction.size() - text.size()), 1000));
  }
  return true;
}

}  // namespace

LiteralError parseDuration(std::string_view text, bool isLong, LiteralValue& out) {
  out.negative = takeIf(text, '-');
  if (!out.negative) takeIf(text, '+');
  std::uint64_t total = 0;
  bool overflow = false;
  std::size_t nextUnit = 0;
  bool last = false;
  do {
    // takeDigits fails at an underscore before a unit, since it expects a digit after it.
    std::uint64_t count = 0;
    const LiteralError error = takeDigits(text, 10, count);
    if (last || error == LiteralError::Malformed) return LiteralError::Malformed;
    overflow |= error == LiteralError::OutOfRange;
    std::string_view fraction;
    if (takeIf(text, '.')) {
      last = true;
      fraction = text;
      std::uint64_t ignored = 0;
      if (takeDigits(text, 10, ignored) == LiteralError::Malformed) return LiteralError::Malformed;
      fraction.remove_suffix(text.size());
    }
    const auto* const end = std::find_if_not(text.begin(), text.end(), isLetter);
    const std::string_view name = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    const auto* unit = std::find_if(
        std::begin(kUnits) + nextUnit, std::end(kUnits),
        [name](const DurationUnit& candidate) { return equalIgnoringCase(candidate.name, name); });
    if (unit == std::end(kUnits)) return LiteralError::Malformed;
    nextUnit = static_cast<std::size_t>(unit - std::begin(kUnits)) + 1;
    text.remove_prefix(name.size());
    if (takeIf(text, '_') && text.empty()) return LiteralError::Malformed;

    overflow |= __builtin_mul_overflow(count, unit->nanoseconds, &count);
    overflow |= __builtin_add_overflow(total, count, &total);
    overflow |= __builtin_add_overflow(total, fractionOf(fraction, unit->nanoseconds), &total);
  } while (!text.empty());

  const std::uint64_t ticks = isLong ? total : total / 1'000'000;
  if (overflow ||
      !integerFits(out.negative, ticks, isLong ? BasicDataType::LInt : BasicDataType::DInt)) {
    return LiteralError::OutOfRange;
  }
  out.ticks = static_cast<std::int64_t>(out.negative ? 0 - ticks : ticks);
  return LiteralError::None;
}

LiteralError parseCalendar(std::string_view text, LiteralValue& out) {
  std::int64_t seconds = 0;
  std::int64_t milliseconds = 0;
  const bool hasDate = out.form != LiteralForm::TimeOfDay;
  const bool hasClock = out.form != LiteralForm::Date;
  if (hasDate && !takeDate(text, seconds)) return LiteralError::Malformed;
  if (hasDate && hasClock && !takeIf(text, '-')) return LiteralError::Malformed;
  if (hasClock && !takeClock(text, milliseconds)) return LiteralError::Malformed;
  if (!text.empty()) return LiteralError::Malformed;
  out.ticks = hasDate ? seconds + milliseconds / 1000 : milliseconds;
  return out.ticks >= 0 && out.ticks <= std::numeric_limits<std::uint32_t>::max()
             ? LiteralError::None
             : LiteralError::OutOfRange;
}

}  // namespace hostkit::literal
