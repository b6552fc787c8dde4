#include "cli/retention.h"

#include <fmt/format.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <nlohmann/json.hpp>
#include <string_view>

#include "cli/failure.h"
#include "cli/value_parse.h"
#include "cli/value_parts.h"

namespace velc {

namespace {

using Json = nlohmann::ordered_json;
using refhost::ProgramVariable;
using refhost::ValueShape;
using vel::BasicDataType;

constexpr int kForm = 1;

// The type as far as it decides whether a value fits: without the names of structures.
std::string typeText(const ValueShape& shape) {
  if (shape.element != nullptr) {
    std::string bounds;
    for (const auto& [low, high] : shape.bounds) {
      bounds += fmt::format("{}{}..{}", bounds.empty() ? "" : ", ", low, high);
    }
    return fmt::format("ARRAY[{}] OF {}", bounds, typeText(*shape.element));
  }
  if (shape.isStructure) {
    std::string members;
    for (const ValueShape::Member& member : shape.members) {
      members += fmt::format("{}{} : {}", members.empty() ? "" : "; ", member.name,
                             typeText(*member.shape));
    }
    return "STRUCT(" + members + ")";
  }
  if (!shape.names.empty()) return "ENUM";
  if (shape.type == BasicDataType::String) return fmt::format("STRING[{}]", shape.byteSize - 1);
  if (shape.type == BasicDataType::WString) {
    return fmt::format("WSTRING[{}]", shape.byteSize / 2 - 1);
  }
  return shape.typeName;
}

Json valueOf(const ValueShape& shape, std::string_view& bytes) {
  if (shape.element != nullptr) {
    Json elements = Json::array();
    for (std::int64_t i = 0; i < shape.count; ++i) {
      elements.push_back(valueOf(*shape.element, bytes));
    }
    return elements;
  }
  if (!shape.isStructure) return partsText(shape, bytes);
  Json members = Json::object();
  for (const ValueShape::Member& member : shape.members) {
    members.emplace(member.name, valueOf(*member.shape, bytes));
  }
  return members;
}

// Appends the memory of `value`. False when it has another form or a value does not fit.
bool appendBytes(const ValueShape& shape, const Json& value, std::string& bytes) {
  if (shape.element != nullptr) {
    if (!value.is_array() || value.size() != static_cast<std::size_t>(shape.count)) return false;
    for (const Json& element : value) {
      if (!appendBytes(*shape.element, element, bytes)) return false;
    }
    return true;
  }
  if (shape.isStructure) {
    if (!value.is_object()) return false;
    for (const ValueShape::Member& member : shape.members) {
      const auto found = value.find(member.name);
      if (found == value.end() || !appendBytes(*member.shape, *found, bytes)) return false;
    }
    return true;
  }
  if (!value.is_string()) return false;
  std::string memory;
  std::string error;
  if (!parseValue(shape, value.get<std::string>(), memory, error)) return false;
  bytes += memory;
  return true;
}

[[noreturn]] void refuse(const std::string& path) {
  throw Failure(fmt::format("{} is not a file of retained variables", path));
}

// Empty when there is no such file.
std::string readWhole(const std::string& path) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                             std::fclose);
  if (file == nullptr && errno == ENOENT) return {};
  std::string text;
  std::array<char, 65536> buffer;
  if (file != nullptr) {
    errno = 0;
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file.get())) {
      text.append(buffer.data(), count);
    }
  }
  if (file == nullptr || std::ferror(file.get()) != 0) {
    throw Failure(fmt::format("cannot read {}: {}", path, std::strerror(errno)));
  }
  if (text.empty()) refuse(path);
  return text;
}

// Nothing is copied, since copying takes stack for each level of nesting.
bool hasMember(const Json& object, const char* name) {
  return object.is_object() && object.contains(name);
}

// The entries by name. Throws Failure when the text has another form.
Json parsed(const std::string& path, const std::string& text) {
  Json file = Json::parse(text, nullptr, false);
  const bool fits = hasMember(file, "velc-retain") && file["velc-retain"] == kForm &&
                    hasMember(file, "clock") && file["clock"].is_number_unsigned() &&
                    file["clock"] <= std::numeric_limits<std::uint32_t>::max() &&
                    hasMember(file, "variables") && file["variables"].is_object();
  if (!fits) refuse(path);
  return file;
}

// Why the value of `variable` in `entry` is left out; empty when it has been appended to `bytes`.
std::string refusal(const ProgramVariable& variable, const Json& entry, std::string& bytes) {
  const bool whole =
      hasMember(entry, "value") && hasMember(entry, "type") && entry["type"].is_string();
  if (!whole) return "its entry has no type and value";
  const std::string stored = entry["type"];
  const std::string wanted = typeText(*variable.shape);
  if (stored != wanted) return fmt::format("it is of type {}, not {}", wanted, stored);
  std::string memory(1, '\1');
  if (!appendBytes(*variable.shape, entry["value"], memory))
    return "its value does not fit its type";
  bytes += memory;
  return {};
}

// True of the state of an edge detection, whose name the program does not contain: a digest.
bool isHidden(const std::string& name) {
  const char first = name[name.rfind('.') + 1];
  return first >= '0' && first <= '9';
}

}  // namespace

Retained loadRetained(const std::string& path, const std::vector<ProgramVariable>& variables,
                      std::string& notices) {
  Retained retained;
  const std::string text = readWhole(path);
  if (text.empty()) return retained;
  Json file = parsed(path, text);
  retained.clock = file["clock"].get<std::uint32_t>();
  Json& entries = file["variables"];
  const auto leaveOut = [&](const std::string& name, const std::string& why) {
    notices += fmt::format("velc: {}: '{}' is left out: {}\n", path, name, why);
  };
  for (const ProgramVariable& variable : variables) {
    const std::string name = variable.qualifiedName();
    const auto entry = entries.find(name);
    const std::string why = entry == entries.end() ? "the file has no value for it"
                                                   : refusal(variable, *entry, retained.bytes);
    if (entry != entries.end()) entries.erase(entry);
    if (why.empty()) continue;
    if (!isHidden(name)) leaveOut(name, why);
    retained.bytes += '\0';
  }
  for (const auto& [name, entry] : entries.items()) {
    if (!isHidden(name)) leaveOut(name, "the program has no such retained variable");
  }
  return retained;
}

std::string retainedText(const Retained& retained, const std::vector<ProgramVariable>& variables) {
  std::string_view bytes = retained.bytes;
  Json entries = Json::object();
  for (const ProgramVariable& variable : variables) {
    bytes.remove_prefix(bytes.empty() ? 0 : 1);
    entries[variable.qualifiedName()] = {{"type", typeText(*variable.shape)},
                                         {"value", valueOf(*variable.shape, bytes)}};
  }
  const Json file = {{"velc-retain", kForm}, {"clock", retained.clock}, {"variables", entries}};
  return file.dump(2) + '\n';
}

}  // namespace velc
