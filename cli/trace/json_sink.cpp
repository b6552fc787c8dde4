#include "cli/trace/json_sink.h"

#include "cli/value_json.h"

namespace velc {

JsonSink::JsonSink(const std::vector<Column>& columns, bool changesOnly, TextSink& text)
    : changesOnly_(changesOnly), text_(text), values_(columns.size()) {
  for (const Column& column : columns) names_.push_back(jsonString(column.name) + ':');
}

void JsonSink::scan(std::uint64_t time, const std::vector<Cell>& cells) {
  bool changed = false;
  line_ = "{\"time\":" + std::to_string(time);
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (cells[i].changed) {
      std::string_view bytes = cells[i].bytes;
      values_[i] = valueJson(*cells[i].column->shape, bytes);
      changed = true;
    }
    if (!changesOnly_ || cells[i].changed) line_.append(",").append(names_[i]).append(values_[i]);
  }
  if (!changesOnly_ || changed) text_.write(line_ += "}\n");
}

void JsonSink::end(std::uint64_t /*time*/) {}

}  // namespace velc
