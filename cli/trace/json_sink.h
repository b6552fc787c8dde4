#pragma once

#include "cli/trace/sink.h"

namespace velc {

// A JSON object in a line for each scan: "time" in milliseconds, and the values by name. With
// `changesOnly`, without the values that have not changed.
class JsonSink : public TraceSink {
 public:
  JsonSink(const std::vector<Column>& columns, bool changesOnly, TextSink& text);

  void scan(std::uint64_t time, const std::vector<Cell>& cells) override;
  void end(std::uint64_t time) override;

 private:
  bool changesOnly_;
  TextSink& text_;
  std::vector<std::string> names_;
  std::vector<std::string> values_;
  std::string line_;
};

}  // namespace velc
