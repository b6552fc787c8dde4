// Draws a trace as SVG: a lane for each variable over a common axis of time.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cli/plot/lane.h"

namespace velc {

class Plot : public TraceSink {
 public:
  // Throws Failure for too many columns, which must outlive the object.
  explicit Plot(const std::vector<Column>& columns);

  void scan(std::uint64_t time, const std::vector<Cell>& cells) override;
  void end(std::uint64_t time) override { end_ = time; }

  // The picture of all scans, once end() has been called.
  std::string svg() const;

 private:
  const std::vector<Column>& columns_;
  std::vector<std::unique_ptr<Lane>> lanes_;
  std::uint64_t scans_ = 0;
  std::uint64_t end_ = 0;
};

}  // namespace velc
