// Takes the records of a running program and gives them to sinks.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cli/process.h"
#include "cli/trace/sink.h"

namespace velc {

enum class TraceFormat : std::uint8_t { Csv, Json, Vcd };

// The sink for a form. With `changesOnly`, scans and, if the form allows it, values are left out
// that have not changed. `columns` and `text` must outlive it.
std::unique_ptr<TraceSink> traceSink(TraceFormat format, const std::vector<Column>& columns,
                                     bool changesOnly, TextSink& text);

class Trace : public RecordSink {
 public:
  // `cycle` is the time between scans in milliseconds. `columns` must outlive the object.
  Trace(const std::vector<Column>& columns, std::size_t recordSize, std::uint64_t cycle);

  // Before the first record.
  void add(TraceSink& sink) { sinks_.push_back(&sink); }

  void take(std::string_view bytes) override;
  // No more records follow. A record that is not whole is left out.
  void end();

 private:
  void takeRecord(const char* record);

  std::size_t recordSize_;
  std::uint64_t cycle_;
  std::uint64_t time_ = 0;
  std::vector<Cell> cells_;
  std::vector<TraceSink*> sinks_;
  std::string before_;   // the record before, to which the cells refer; empty before the first
  std::string pending_;  // the beginning of a record
};

}  // namespace velc
