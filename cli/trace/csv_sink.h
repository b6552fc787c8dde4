#pragma once

#include "cli/trace/sink.h"

namespace velc {

// `text` as a field of RFC 4180.
std::string csvField(std::string_view text);

// A header, and a row for each scan: the time in milliseconds and all values, so that `--stimulus`
// reads it.
class CsvSink : public TraceSink {
 public:
  CsvSink(const std::vector<Column>& columns, bool changesOnly, TextSink& text);

  void scan(std::uint64_t time, const std::vector<Cell>& cells) override;
  void end(std::uint64_t time) override;

 private:
  bool changesOnly_;
  TextSink& text_;
  std::vector<std::string> fields_;
  std::string row_;
};

}  // namespace velc
