// A form of a trace.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cli/trace/columns.h"

namespace velc {

// The value of a column behind a scan.
struct Cell {
  const Column* column = nullptr;
  std::string_view bytes;  // in the memory of the program
  std::string text;        // as `--set` accepts it
  bool changed = false;    // since the scan before; true in the first
};

class TraceSink {
 public:
  virtual ~TraceSink() = default;
  // `time` is that of the scan, in milliseconds since the start. The cells have the order of the
  // columns.
  virtual void scan(std::uint64_t time, const std::vector<Cell>& cells) = 0;
  // No more scans follow. `time` is when the next one would have begun.
  virtual void end(std::uint64_t time) = 0;
};

// Gets the text of a trace in pieces. May throw.
class TextSink {
 public:
  virtual ~TextSink() = default;
  virtual void write(std::string_view text) = 0;
};

}  // namespace velc
