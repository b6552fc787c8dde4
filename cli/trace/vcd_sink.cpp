#include "cli/trace/vcd_sink.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

#include "hostkit/elementary_types.h"
#include "refhost/string_literal.h"

namespace velc {

namespace {

using refhost::ValueShape;
using vel::BasicDataType;

enum class WireKind { Bit, Bits, Signed, Real, Text };

WireKind wireKindOf(const ValueShape& shape) {
  const BasicDataType type = shape.type;
  if (!shape.names.empty()) return WireKind::Text;
  if (type == BasicDataType::Bool || type == BasicDataType::BitAddress) return WireKind::Bit;
  if (hostkit::isFloat(type)) return WireKind::Real;
  if (hostkit::isSigned(type) || hostkit::isDuration(type)) return WireKind::Signed;
  return hostkit::isInteger(type) || type == BasicDataType::Pointer ? WireKind::Bits
                                                                    : WireKind::Text;
}

const char* typeName(WireKind kind) {
  switch (kind) {
    case WireKind::Signed:
      return "integer";
    case WireKind::Real:
      return "real";
    case WireKind::Text:
      return "string";
    default:
      return "wire";
  }
}

int widthOf(WireKind kind, const ValueShape& shape) {
  if (kind == WireKind::Bit || kind == WireKind::Text) return 1;
  return kind == WireKind::Real ? 64 : shape.byteSize * 8;
}

// A number in the printable characters.
std::string codeOf(std::size_t number) {
  constexpr std::size_t kCharacters = '~' - '!' + 1;
  std::string code;
  for (;; number = number / kCharacters - 1) {
    code += static_cast<char>('!' + number % kCharacters);
    if (number < kCharacters) return code;
  }
}

// The scopes of a column, and last its own name. Viewers take brackets for a range of bits and
// dots for scopes.
std::vector<std::string> stepsOf(const Column& column) {
  std::vector<std::string> steps(1);
  const std::string path =
      column.program.empty() ? column.path : column.program + '.' + column.path;
  for (std::size_t i = 0; i < path.size(); ++i) {
    const bool digitFollows = i + 1 < path.size() && path[i + 1] >= '0' && path[i + 1] <= '9';
    if (path[i] == '.' && !digitFollows) {
      steps.emplace_back();
    } else if (path[i] == '.') {  // in a device address
      steps.back() += '_';
    } else {
      steps.back() += path[i] == '[' ? '(' : path[i] == ']' ? ')' : path[i];
    }
  }
  return steps;
}

std::string bitsText(std::string_view bytes) {
  std::string bits;
  for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte) {
    bits += fmt::format("{:08b}", static_cast<unsigned char>(*byte));
  }
  const std::size_t one = bits.find('1');
  return one == std::string::npos ? "0" : bits.substr(one);
}

// Viewers extend the first bit, unless it is 1, to the width.
std::string valueText(const Cell& cell) {
  const ValueShape& shape = *cell.column->shape;
  switch (wireKindOf(shape)) {
    case WireKind::Bit:
      return cell.text == "TRUE" ? "1" : "0";
    case WireKind::Bits:
    case WireKind::Signed:
      return "b" + bitsText(cell.bytes) + ' ';
    case WireKind::Real:
      return "r" + cell.text + ' ';
    default:
      break;
  }
  const bool text = hostkit::isText(shape.type) && shape.names.empty();
  std::string value = "s";
  for (const char c : text ? refhost::plainText(shape.type, cell.bytes) : cell.text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool plain = byte > ' ' && byte < 0x7F && c != '\\';
    value += plain ? std::string(1, c) : fmt::format("\\x{:02x}", byte);
  }
  return value + ' ';
}

}  // namespace

VcdSink::VcdSink(const std::vector<Column>& columns, TextSink& text) : text_(text) {
  std::string header = "$version velc " VELC_VERSION " $end\n$timescale 1 ms $end\n";
  std::vector<std::string> open;
  for (const Column& column : columns) {
    std::vector<std::string> steps = stepsOf(column);
    const std::string name = std::move(steps.back());
    steps.pop_back();
    const auto shared = std::mismatch(open.begin(), open.end(), steps.begin(), steps.end()).first;
    for (auto left = shared; left != open.end(); ++left) header += "$upscope $end\n";
    for (auto i = static_cast<std::size_t>(shared - open.begin()); i < steps.size(); ++i) {
      header += fmt::format("$scope module {} $end\n", steps[i]);
    }
    open = std::move(steps);
    const WireKind kind = wireKindOf(*column.shape);
    codes_.push_back(codeOf(codes_.size()));
    header += fmt::format("$var {} {} {} {} $end\n", typeName(kind), widthOf(kind, *column.shape),
                          codes_.back(), name);
  }
  for (std::size_t i = 0; i < open.size(); ++i) header += "$upscope $end\n";
  text_.write(header + "$enddefinitions $end\n");
}

void VcdSink::scan(std::uint64_t time, const std::vector<Cell>& cells) {
  changes_.clear();
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (cells[i].changed) changes_.append(valueText(cells[i])).append(codes_[i]).append("\n");
  }
  if (changes_.empty()) return;
  if (!started_) changes_ = "$dumpvars\n" + changes_ + "$end\n";
  if (!started_ || time != time_) text_.write(fmt::format("#{}\n", time));
  text_.write(changes_);
  started_ = true;
  time_ = time;
}

void VcdSink::end(std::uint64_t time) {
  if (started_ && time != time_) text_.write(fmt::format("#{}\n", time));
}

}  // namespace velc
