#include "cli/stimulus/stimulus.h"

#include <fmt/format.h>

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <optional>

#include "cli/counted.h"
#include "cli/excerpt.h"
#include "cli/failure.h"
#include "cli/program_driver.h"
#include "cli/value_parse.h"
#include "hostkit/literal.h"

namespace velc {

namespace {

using hostkit::LiteralForm;
using hostkit::LiteralValue;
using refhost::ProgramVariable;

constexpr std::uint64_t kNanoseconds = 1'000'000;  // in a millisecond
constexpr std::uint64_t kLatest = std::numeric_limits<std::int64_t>::max() / kNanoseconds;

// A number of milliseconds, or a literal of TIME or LTIME, in nanoseconds.
std::optional<std::uint64_t> timeOf(const std::string& text) {
  LiteralValue value;
  if (hostkit::parseLiteral(text, value) != hostkit::LiteralError::None) return {};
  switch (value.form) {
    case LiteralForm::Integer:
      if (value.negative || value.magnitude > kLatest) return {};
      return value.magnitude * kNanoseconds;
    case LiteralForm::Real:
      if (!(value.real >= 0 && value.real <= static_cast<double>(kLatest))) return {};
      return static_cast<std::uint64_t>(std::llround(value.real * kNanoseconds));
    case LiteralForm::Duration:
      if (value.ticks < 0) return {};
      return static_cast<std::uint64_t>(value.ticks) *
             (value.type == vel::BasicDataType::Time ? kNanoseconds : 1);
    default:
      return {};
  }
}

std::optional<std::uint64_t> positiveNumber(const std::string& text) {
  bool negative = false;
  std::uint64_t magnitude = 0;
  if (!hostkit::parseIntegerLiteral(text, negative, magnitude) || negative) return {};
  return magnitude == 0 ? std::nullopt : std::optional(magnitude);
}

std::string bytesOf(std::uint64_t number) {
  return {reinterpret_cast<const char*>(&number), sizeof number};
}

}  // namespace

Stimulus::Stimulus(const std::string& path, const Places& places, std::uint64_t cycle)
    : reader_(path), cycle_(cycle) {
  std::vector<Field> header;
  if (!reader_.read(header)) reader_.refuse({{}, 1, 1}, "there is no header");
  columns_ = header.size();
  findStart(header);
  for (std::size_t i = 0; i < columns_; ++i) {
    if (i == start_) continue;
    ProgramVariable place;
    std::string error;
    const std::string& name = header[i].text;
    if (name.empty()) reader_.refuse(header[i], "the column has no name");
    if (!places.find(name, place, error)) {
      const bool isCut = name.find('[') != std::string::npos && name.find(']') == std::string::npos;
      reader_.refuse(header[i], isCut ? error + "; a name with a comma stands in quotes" : error);
    }
    if (!isSettable(place)) {
      reader_.refuse(header[i], fmt::format("'{}' cannot be set", name));
    }
    variables_.push_back(std::move(place));
    names_.push_back(header[i].text);
  }
  held_.resize(variables_.size());
  shared_ = sharedStorage(variables_);
  for (const SharedStorage& shared : shared_) {
    if (!shared.isSameVariable()) continue;
    reader_.refuse(fieldOf(shared.second, header),
                   fmt::format("'{}' and '{}' are the same variable", names_[shared.first],
                               names_[shared.second]));
  }
}

void Stimulus::findStart(const std::vector<Field>& header) {
  for (const char* const name : {"time", "scan"}) {
    for (start_ = 0; start_ < columns_; ++start_) {
      if (hostkit::equalIgnoringCase(header[start_].text, name)) return;
    }
    byTime_ = false;
  }
  const bool other = header.size() == 1 && header[0].text.find_first_of(";\t") != std::string::npos;
  reader_.refuse(header[0], other ? "commas must separate the columns"
                                  : "the header has no column 'time' or 'scan'");
}

std::uint64_t Stimulus::scanOf(const Field& field) {
  const std::optional<std::uint64_t> value =
      byTime_ ? timeOf(field.text) : positiveNumber(field.text);
  if (!value) {
    reader_.refuse(field, fmt::format("{} is no {}", inQuotes(field.text),
                                      byTime_ ? "time in milliseconds, and no TIME"
                                              : "number of a scan, of which the first is 1"));
  }
  if (!first_ && *value <= before_) {
    reader_.refuse(field, fmt::format("the {} must be greater than that of the row before",
                                      byTime_ ? "time" : "scan"));
  }
  first_ = false;
  before_ = *value;
  if (!byTime_) return *value - 1;
  if (*value == 0) return 0;
  if (cycle_ == 0) reader_.refuse(field, "no scan has this time, since --cycle is T#0ms");
  return (*value - 1) / (cycle_ * kNanoseconds) + 1;
}

std::string Stimulus::rowBytes(const std::vector<Field>& fields) {
  std::string bytes;
  std::string error;
  for (std::size_t i = 0; i < variables_.size(); ++i) {
    const Field& field = fieldOf(i, fields);
    const bool given = !field.text.empty();
    if (given && !parseValue(*variables_[i].shape, field.text, held_[i], error)) {
      reader_.refuse(field, error);
    }
    bytes += given ? '\1' : '\0';
    bytes += given ? held_[i] : std::string(static_cast<std::size_t>(variables_[i].byteSize), '\0');
  }
  checkShared(fields);
  return bytes;
}

void Stimulus::checkShared(const std::vector<Field>& fields) const {
  for (const SharedStorage& shared : shared_) {
    const std::string& first = held_[shared.first];
    const std::string& second = held_[shared.second];
    const Field& later = fieldOf(shared.second, fields);
    const Field& given = later.text.empty() ? fieldOf(shared.first, fields) : later;
    if (first.empty() || second.empty() || given.text.empty()) continue;
    for (std::uint64_t bit = shared.beginBit; bit < shared.endBit; ++bit) {
      if (bitOf(variables_[shared.first], first, bit) ==
          bitOf(variables_[shared.second], second, bit)) {
        continue;
      }
      reader_.refuse(given, fmt::format("'{}' and '{}' share storage and get different values",
                                        names_[shared.first], names_[shared.second]));
    }
  }
}

std::uint64_t Stimulus::writeRows(const std::string& target) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(target.c_str(), "wbe"),
                                                             std::fclose);
  const auto fail = [&target] {
    throw Failure(fmt::format("cannot write {}: {}", target, std::strerror(errno)));
  };
  if (file == nullptr) fail();
  std::uint64_t scans = 0;
  std::vector<Field> fields;
  while (reader_.read(fields)) {
    if (fields.size() != columns_) {
      reader_.refuse(fields.back(), fmt::format("the row has {}, and the header {}",
                                                counted(fields.size(), "field"), columns_));
    }
    const std::uint64_t scan = scanOf(fields[start_]);
    const std::string row = bytesOf(scan) + rowBytes(fields);
    if (std::fwrite(row.data(), 1, row.size(), file.get()) != row.size()) fail();
    scans = scan + 1;
  }
  if (std::fflush(file.get()) != 0) fail();
  return scans;
}

}  // namespace velc
