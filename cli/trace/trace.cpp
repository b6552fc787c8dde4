#include "cli/trace/trace.h"

#include <algorithm>
#include <cstring>

#include "cli/trace/csv_sink.h"
#include "cli/trace/json_sink.h"
#include "cli/trace/vcd_sink.h"
#include "cli/value_parts.h"

namespace velc {

std::unique_ptr<TraceSink> traceSink(TraceFormat format, const std::vector<Column>& columns,
                                     bool changesOnly, TextSink& text) {
  switch (format) {
    case TraceFormat::Json:
      return std::make_unique<JsonSink>(columns, changesOnly, text);
    case TraceFormat::Vcd:
      return std::make_unique<VcdSink>(columns, text);
    default:
      return std::make_unique<CsvSink>(columns, changesOnly, text);
  }
}

Trace::Trace(const std::vector<Column>& columns, std::size_t recordSize, std::uint64_t cycle)
    : recordSize_(recordSize), cycle_(cycle) {
  for (const Column& column : columns) cells_.push_back({&column, {}, {}, false});
}

void Trace::take(std::string_view bytes) {
  while (!bytes.empty()) {
    if (pending_.empty() && bytes.size() >= recordSize_) {
      takeRecord(bytes.data());
      bytes.remove_prefix(recordSize_);
      continue;
    }
    const std::size_t missing = std::min(recordSize_ - pending_.size(), bytes.size());
    pending_.append(bytes.substr(0, missing));
    bytes.remove_prefix(missing);
    if (pending_.size() < recordSize_) return;
    takeRecord(pending_.data());
    pending_.clear();
  }
}

void Trace::takeRecord(const char* record) {
  const bool first = before_.empty();
  if (first) before_.assign(record, recordSize_);
  for (Cell& cell : cells_) {
    const auto size = static_cast<std::size_t>(cell.column->shape->byteSize);
    char* const place = before_.data() + cell.column->offset;
    cell.changed = first;
    if (!first && std::memcmp(place, record + cell.column->offset, size) == 0) continue;
    std::memcpy(place, record + cell.column->offset, size);
    cell.bytes = {place, size};
    std::string_view rest = cell.bytes;
    std::string text = partsText(*cell.column->shape, rest);
    // Behind the end of a string, bytes may change that are no part of it.
    cell.changed = first || text != cell.text;
    cell.text = std::move(text);
  }
  for (TraceSink* const sink : sinks_) sink->scan(time_, cells_);
  time_ += cycle_;
}

void Trace::end() {
  for (TraceSink* const sink : sinks_) sink->end(time_);
}

}  // namespace velc
