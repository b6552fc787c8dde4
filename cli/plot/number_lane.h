#pragma once

#include <cstdint>
#include <limits>

#include "cli/plot/axis.h"
#include "cli/plot/lane.h"

namespace velc {

// The numbers of some scans. Those that are not finite are only known to be among them.
struct NumberBucket {
  enum Beyond : std::uint8_t { NaN = 1, Above = 2, Below = 4 };

  double first = std::numeric_limits<double>::quiet_NaN();
  double last = first;
  double low = std::numeric_limits<double>::infinity();
  double high = -low;
  std::uint8_t beyond = 0;  // a set of Beyond

  static NumberBucket of(double value);
  void append(const NumberBucket& next);
  bool isGap() const { return low > high; }
};

// A number as a line that holds each value until the next scan, with an axis, and boxes for values
// that are not finite. One that never changes is a box with its value.
class NumberLane : public Lane {
 public:
  explicit NumberLane(const refhost::ValueShape& shape) : shape_(shape) {}

  void add(const Cell& cell) override;
  double height() const override { return isConstant() ? kBoxHeight : 96; }
  std::string unit() const override { return unitOf().name; }
  void draw(const Frame& frame, std::uint64_t scans, std::string& svg) const override;

 private:
  Unit unitOf() const;
  void drawAxisAndLine(const Frame& frame, std::uint64_t scans, std::string& svg) const;
  void drawBeyond(const Frame& frame, std::uint64_t scans, std::string& svg) const;
  bool isConstant() const { return changes_ < 2; }

  const refhost::ValueShape& shape_;
  double value_ = 0;
  std::uint64_t changes_ = 0;
  std::string text_;
  Buckets<NumberBucket> buckets_;
  double low_ = std::numeric_limits<double>::infinity();
  double high_ = -low_;
};

// A BOOL as a line between two levels, filled where it is TRUE.
class LevelLane : public Lane {
 public:
  void add(const Cell& cell) override;
  double height() const override { return 22; }
  void draw(const Frame& frame, std::uint64_t scans, std::string& svg) const override;

 private:
  Buckets<NumberBucket> buckets_;
};

}  // namespace velc
