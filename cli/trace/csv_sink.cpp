#include "cli/trace/csv_sink.h"

#include <algorithm>

namespace velc {

std::string csvField(std::string_view text) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(text);
  std::string field = "\"";
  for (const char c : text) field.append(c == '"' ? 2 : 1, c);
  return field + '"';
}

CsvSink::CsvSink(const std::vector<Column>& columns, bool changesOnly, TextSink& text)
    : changesOnly_(changesOnly), text_(text), fields_(columns.size()) {
  row_ = "time";
  for (const Column& column : columns) row_.append(",").append(csvField(column.name));
  text_.write(row_ + '\n');
}

void CsvSink::scan(std::uint64_t time, const std::vector<Cell>& cells) {
  bool changed = false;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (!cells[i].changed) continue;
    fields_[i] = csvField(cells[i].text);
    changed = true;
  }
  if (changesOnly_ && !changed) return;
  row_ = std::to_string(time);
  for (const std::string& field : fields_) row_.append(",").append(field);
  text_.write(row_ += '\n');
}

void CsvSink::end(std::uint64_t /*time*/) {}

}  // namespace velc
