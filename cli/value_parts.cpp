#include "cli/value_parts.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <vector>

#include "cli/failure.h"
#include "hostkit/folding.h"
#include "refhost/value_format.h"

namespace velc {

namespace {

using refhost::ProgramVariable;
using refhost::ValueShape;

std::string enumerationText(const ValueShape& shape, const std::string& number) {
  for (const auto& [value, name] : shape.names) {
    if (std::to_string(value) == number) return name;
  }
  return number;
}

// Writes equal elements once with their number, as an initial value can: `3(0)`.
class ElementList {
 public:
  void add(std::string text) {
    if (count_ != 0 && text == text_) {
      ++count_;
      return;
    }
    end();
    text_ = std::move(text);
    count_ = 1;
  }

  std::string finished() {
    end();
    return "[" + list_ + "]";
  }

 private:
  static constexpr int kFewest = 5;

  void end() {
    const auto append = [this](const std::string& item) {
      if (!list_.empty()) list_ += ", ";
      list_ += item;
    };
    if (count_ >= kFewest) {
      append(fmt::format("{}({})", count_, text_));
    } else {
      for (std::int64_t i = 0; i < count_; ++i) append(text_);
    }
  }

  std::string list_;
  std::string text_;  // the element that has yet to be written
  std::int64_t count_ = 0;
};

// Removes and returns the part of `path` before the first character of `ends`.
std::string_view takeUntil(std::string_view& path, std::string_view ends) {
  const std::string_view taken = path.substr(0, path.find_first_of(ends));
  path.remove_prefix(taken.size());
  return taken;
}

// Removes subscripts such as `[1, 2]` from `path` and returns the index of the element; -1 when
// there is no such element.
std::int64_t takeSubscripts(const ValueShape& array, std::string_view& path) {
  std::int64_t place = 0;
  for (const auto& [low, high] : array.bounds) {
    if (path.empty() || path.front() == ']') return -1;
    path.remove_prefix(1);
    const std::string_view text = takeUntil(path, ",]");
    std::int64_t subscript = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), subscript);
    const bool whole = result.ec == std::errc() && result.ptr == text.data() + text.size();
    if (!whole || subscript < low || subscript > high) return -1;
    place = place * (high - low + 1) + (subscript - low);
  }
  if (path.empty() || path.front() != ']') return -1;
  path.remove_prefix(1);
  return place;
}

// The subscripts of the element at this place, such as `[1,2]`.
std::string subscriptsText(const ValueShape& array, std::int64_t place) {
  std::string text;
  for (auto bounds = array.bounds.rbegin(); bounds != array.bounds.rend(); ++bounds) {
    const std::int64_t length = bounds->second - bounds->first + 1;
    if (!text.empty()) text.insert(0, 1, ',');
    text.insert(0, std::to_string(bounds->first + place % length));
    place /= length;
  }
  return "[" + text + "]";
}

// -1 when there is no such member.
std::int64_t memberNumber(const ValueShape& structure, std::string_view name) {
  const auto& members = structure.members;
  const auto found = std::find_if(members.begin(), members.end(), [name](const auto& member) {
    return hostkit::equalIgnoringCase(member.name, name);
  });
  return found == members.end() ? -1 : found - members.begin();
}

}  // namespace

std::string partsText(const ValueShape& shape, std::string_view& bytes) {
  if (shape.element != nullptr) {
    ElementList list;
    for (std::int64_t i = 0; i < shape.count; ++i) list.add(partsText(*shape.element, bytes));
    return list.finished();
  }
  if (shape.isStructure) {
    std::string text;
    for (const ValueShape::Member& member : shape.members) {
      text += fmt::format("{}{} := {}", text.empty() ? "" : ", ", member.name,
                          partsText(*member.shape, bytes));
    }
    return "(" + text + ")";
  }
  const auto size = static_cast<std::size_t>(shape.byteSize);
  if (bytes.size() < size) throw Failure("the program did not write all its values");
  const std::string text = refhost::valueText(shape.type, shape.typeName, bytes.substr(0, size));
  bytes.remove_prefix(size);
  return shape.names.empty() ? text : enumerationText(shape, text);
}

std::int64_t partCount(const ValueShape& shape) {
  return shape.isStructure ? static_cast<std::int64_t>(shape.members.size()) : shape.count;
}

ProgramVariable partNumber(const ProgramVariable& variable, std::int64_t number) {
  const ValueShape& shape = *variable.shape;
  ProgramVariable part = variable;
  if (shape.isStructure) {
    const ValueShape::Member& member = shape.members[static_cast<std::size_t>(number)];
    part.name += '.' + member.name;
    part.reference += member.reference;
    if (part.firstBit) *part.firstBit += member.offset * 8;
    part.shape = member.shape;
  } else {
    part.name += subscriptsText(shape, number);
    part.reference += fmt::format(".a[{}]", number);
    if (part.firstBit) *part.firstBit += static_cast<std::uint64_t>(number) * shape.stride * 8;
    part.shape = shape.element;
  }
  part.type = part.shape->type;
  part.typeName = part.shape->typeName;
  part.byteSize = part.shape->byteSize;
  return part;
}

PartAt partAt(const ProgramVariable& variable, std::string_view path) {
  PartAt at{variable, path};
  while (!at.rest.empty()) {
    const ValueShape* const shape = at.variable.shape.get();
    std::string_view rest = at.rest;
    std::int64_t number = -1;
    if (shape != nullptr && shape->element != nullptr && rest.front() == '[') {
      number = takeSubscripts(*shape, rest);
    } else if (shape != nullptr && shape->isStructure && rest.front() == '.') {
      rest.remove_prefix(1);
      number = memberNumber(*shape, takeUntil(rest, ".["));
    }
    if (number < 0) break;
    at.variable = partNumber(at.variable, number);
    at.rest = rest;
  }
  return at;
}

}  // namespace velc
