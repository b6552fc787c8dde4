#pragma once

#include <vector>

#include "cli/plot/lane.h"

namespace velc {

// The values of some scans as texts. Where they differ the text is empty.
struct StateBucket {
  std::string text;
  bool mixed = false;

  void append(const StateBucket& next) {
    mixed = mixed || next.mixed || text != next.text;
    if (mixed) text.clear();
  }
};

// Any other value: a box with the text for as long as the variable has the value.
class StateLane : public Lane {
 public:
  void add(const Cell& cell) override;
  double height() const override { return kBoxHeight; }
  void draw(const Frame& frame, std::uint64_t scans, std::string& svg) const override;

 private:
  // Buckets of the same state.
  struct Stretch {
    const StateBucket* state;
    double begin;  // the number of its first bucket
    double end;    // and of the one behind its last
  };
  std::vector<Stretch> stretches() const;

  StateBucket value_;
  Buckets<StateBucket> buckets_;
};

}  // namespace velc
