// Axes: units and the numbers that stand beside them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace velc {

struct Unit {
  double size = 1;        // of one unit in the values that are drawn
  const char* name = "";  // empty for a number
};

// The unit in which a time of so many nanoseconds reads best; its size is in nanoseconds.
Unit timeUnit(double nanoseconds);

struct Tick {
  double value = 0;
  std::string label;
};

// Round numbers between `low` and `high`, both included if they are round: at most `most`, which is
// at least 2.
std::vector<Tick> ticksBetween(double low, double high, int most, bool whole = false);

// Widens the range so that it begins and ends at round numbers and is not empty.
void roundRange(double& low, double& high, int most, bool whole);

}  // namespace velc
