// A row of the picture: one variable over time.
#pragma once

#include <memory>
#include <string>

#include "cli/plot/buckets.h"
#include "cli/plot/svg.h"
#include "cli/trace/sink.h"

namespace velc {

class Lane {
 public:
  virtual ~Lane() = default;
  // Takes the value of the next scan.
  virtual void add(const Cell& cell) = 0;
  virtual double height() const = 0;
  // The unit of the values; empty for none.
  virtual std::string unit() const { return {}; }
  // Appends the drawing of all scans, `scans` of them, to `svg`.
  virtual void draw(const Frame& frame, std::uint64_t scans, std::string& svg) const = 0;
};

std::unique_ptr<Lane> laneFor(const refhost::ValueShape& shape);

}  // namespace velc
