#pragma once

#include "cli/trace/sink.h"

namespace velc {

// A value change dump for waveform viewers, in milliseconds. Programs, instances and structures are
// scopes. BOOLs are wires of 1 bit, bit strings and unsigned integers wires of their width, signed
// integers and durations integers, and REALs reals; enumerations, strings and dates are strings, an
// extension that GTKWave reads.
class VcdSink : public TraceSink {
 public:
  VcdSink(const std::vector<Column>& columns, TextSink& text);

  void scan(std::uint64_t time, const std::vector<Cell>& cells) override;
  void end(std::uint64_t time) override;

 private:
  TextSink& text_;
  std::vector<std::string> codes_;
  bool started_ = false;
  std::uint64_t time_ = 0;  // that has been written last
  std::string changes_;
};

}  // namespace velc
