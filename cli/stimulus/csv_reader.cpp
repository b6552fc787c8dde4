#include "cli/stimulus/csv_reader.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstring>

#include "cli/failure.h"

namespace velc {

namespace {

bool isRowEnd(int c) { return c == '\n' || c == '\r' || c == EOF; }
bool isBlank(int c) { return c == ' ' || c == '\t'; }

}  // namespace

CsvReader::CsvReader(const std::string& path)
    : path_(path), file_(std::fopen(path.c_str(), "rbe"), std::fclose) {
  if (file_ == nullptr) {
    throw Failure(fmt::format("cannot read {}: {}", path, std::strerror(errno)));
  }
  take();
  // Spreadsheets begin a file with a byte order mark.
  for (const int mark : {0xEF, 0xBB, 0xBF}) {
    if (ahead_ == mark) take();
  }
  column_ = 1;
}

int CsvReader::take() {
  const int taken = ahead_;
  errno = 0;
  ahead_ = std::getc(file_.get());
  if (ahead_ == EOF && std::ferror(file_.get()) != 0) {
    throw Failure(fmt::format("cannot read {}: {}", path_, std::strerror(errno)));
  }
  if (taken == '\n' || (taken == '\r' && ahead_ != '\n')) {
    ++line_;
    column_ = 1;
  } else if ((taken & 0xC0) != 0x80) {  // not within a character of UTF-8
    ++column_;
  }
  return taken;
}

bool CsvReader::read(std::vector<Field>& fields) {
  fields.clear();
  while (ahead_ != EOF && (isRowEnd(ahead_) || isBlank(ahead_))) take();
  if (ahead_ == EOF) return false;
  for (;;) {
    while (isBlank(ahead_)) take();
    fields.push_back({{}, line_, column_});
    Field& field = fields.back();
    if (ahead_ == '"') {
      readQuoted(field);
    } else {
      while (ahead_ != ',' && !isRowEnd(ahead_)) field.text += static_cast<char>(take());
      while (!field.text.empty() && isBlank(field.text.back())) field.text.pop_back();
    }
    if (ahead_ != ',') return true;
    take();
  }
}

void CsvReader::readQuoted(Field& field) {
  take();
  for (;;) {
    if (ahead_ == EOF) refuse(field, "the quote at the beginning of the field is not closed");
    const int c = take();
    if (c == '"' && ahead_ != '"') break;
    if (c == '"') take();
    field.text += static_cast<char>(c);
  }
  while (isBlank(ahead_)) take();
  if (ahead_ == ',' || isRowEnd(ahead_)) return;
  refuse({{}, line_, column_}, "a comma or the end of the row must follow the quote");
}

void CsvReader::refuse(const Field& field, const std::string& message) const {
  throw Failure(fmt::format("{}:{}:{}: {}", path_, field.line, field.column, message));
}

}  // namespace velc
