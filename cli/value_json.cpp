#include "cli/value_json.h"

#include <nlohmann/json.hpp>

#include "cli/failure.h"
#include "cli/value_parts.h"
#include "hostkit/elementary_types.h"
#include "hostkit/encoding.h"
#include "refhost/string_literal.h"
#include "refhost/value_memory.h"

namespace velc {

namespace {

using refhost::ValueShape;
using vel::BasicDataType;

std::string elementaryJson(const ValueShape& shape, std::string_view bytes) {
  std::string_view rest = bytes;
  const std::string text = partsText(shape, rest);
  if (!shape.names.empty()) return jsonString(text);
  switch (shape.type) {
    case BasicDataType::Bool:
    case BasicDataType::BitAddress:
      return text == "TRUE" ? "true" : "false";
    case BasicDataType::String:
    case BasicDataType::WString:
      return jsonString(refhost::plainText(shape.type, bytes));
    case BasicDataType::Real:
    case BasicDataType::LReal:
      return text == "NaN" || text.find("Inf") != std::string::npos ? jsonString(text) : text;
    default:
      if (hostkit::isBitStringName(shape.typeName))
        return std::to_string(refhost::unsignedAt(bytes));
      return hostkit::isInteger(shape.type) ? text : jsonString(text);
  }
}

}  // namespace

std::string jsonString(std::string_view text) {
  if (hostkit::isUtf8(text)) return nlohmann::json(text).dump();
  std::string characters;
  for (const char byte : text) {
    hostkit::appendUtf8(static_cast<unsigned char>(byte), characters);
  }
  return nlohmann::json(characters).dump();
}

std::string valueJson(const ValueShape& shape, std::string_view& bytes) {
  if (!shape.hasParts()) {
    const auto size = static_cast<std::size_t>(shape.byteSize);
    if (bytes.size() < size) throw Failure("the program did not write all its values");
    std::string text = elementaryJson(shape, bytes.substr(0, size));
    bytes.remove_prefix(size);
    return text;
  }
  std::string list;
  const auto append = [&list](const std::string& item) {
    if (!list.empty()) list += ",";
    list += item;
  };
  for (std::int64_t i = 0; i < shape.count; ++i) append(valueJson(*shape.element, bytes));
  for (const ValueShape::Member& member : shape.members) {
    append(jsonString(member.name) + ':' + valueJson(*member.shape, bytes));
  }
  return shape.isStructure ? '{' + list + '}' : '[' + list + ']';
}

}  // namespace velc
