#include "cli/plot/axis.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace velc {

namespace {

// The distance of round numbers of which at most `most` lie between `low` and `high`.
double stepOf(double low, double high, int most, bool whole) {
  const double least = std::max((high - low) / (most - 1), whole ? 1.0 : 0.0);
  const double power = std::pow(10, std::floor(std::log10(least)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= least * 0.999) return factor * power;
  }
  return 10 * power;
}

std::string labelOf(double value, double step) {
  const double size = std::max(std::abs(value), step);
  if (value == 0) return "0";
  if (size >= 1e7 || step < 1e-5) return fmt::format("{:.4g}", value);
  const int digits = std::max(0, static_cast<int>(-std::floor(std::log10(step) + 1e-9)));
  return fmt::format("{:.{}f}", value, digits);
}

}  // namespace

Unit timeUnit(double nanoseconds) {
  constexpr Unit kUnits[] = {{3600e9, "h"}, {60e9, "min"}, {1e9, "s"}, {1e6, "ms"}, {1e3, "µs"}};
  for (const Unit& unit : kUnits) {
    const double least = unit.size > 1e9 ? 3 : 1;
    if (nanoseconds >= least * unit.size) return unit;
  }
  return {1, "ns"};
}

std::vector<Tick> ticksBetween(double low, double high, int most, bool whole) {
  std::vector<Tick> ticks;
  const double step = stepOf(low, high, most, whole);
  const double slack = step * 1e-6;
  for (double number = std::ceil((low - slack) / step); number * step <= high + slack; ++number) {
    ticks.push_back({number * step, labelOf(number * step, step)});
  }
  return ticks;
}

void roundRange(double& low, double& high, int most, bool whole) {
  if (low == high) {
    const double margin = low == 0 ? 1 : std::abs(low);
    low -= margin;
    high += margin;
  }
  const double step = stepOf(low, high, most, whole);
  low = std::floor(low / step + 1e-6) * step;
  high = std::ceil(high / step - 1e-6) * step;
}

}  // namespace velc
