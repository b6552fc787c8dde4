#include "refhost/emit/place.h"

#include <fmt/format.h>

#include "refhost/emit/type_text.h"

namespace refhost {

namespace {

// The position of the quote that ends the string literal which begins at `quote`.
std::size_t endOfLiteral(std::string_view text, std::size_t quote) {
  std::size_t end = quote + 1;
  while (text[end] != '"') end += text[end] == '\\' ? 2 : 1;
  return end;
}

// True if a first parenthesis is closed by the last character.
bool isEnclosed(std::string_view text) {
  int depth = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') i = endOfLiteral(text, i);
    if (text[i] == '(') ++depth;
    if (text[i] == ')') --depth;
    if (depth == 0 && i + 1 < text.size()) return false;
  }
  return true;
}

// True if `value` is `text` or `text` in parentheses.
bool isSame(std::string_view value, std::string_view text) {
  while (value.size() >= text.size() + 2 && value.front() == '(' && value.back() == ')') {
    value = value.substr(1, value.size() - 2);
  }
  return value == text;
}

}  // namespace

Place Place::ofAddress(const vel::HeapAddress& address, vel::HeapRawAddr raw, const char* cType) {
  const Kind kind = address.isBitMode() ? Kind::MemoryBit : Kind::Memory;
  return {kind, std::to_string(raw.address), cType};
}

Place Place::ofLocated(const SymbolNames& names, const VarSymbol& variable) {
  return ofLocated(names, variable, std::to_string(variable.backendAddress().address));
}

Place Place::ofLocated(const SymbolNames& names, const VarSymbol& variable, const std::string& at) {
  const vel::SymbolDataType* const type = variable.dataType();
  if (isTextType(type) || isComposite(type)) {
    std::string pointer = fmt::format("VEL_AT({}, {})", typeText(names, type), at);
    if (isComposite(type)) return {Kind::Pointed, std::move(pointer)};
    return {Kind::Object, "(*" + pointer + ")"};
  }
  if (variable.isDeviceBit()) return {Kind::MemoryBit, at};
  return {Kind::Memory, at, refhost::cType(valueType(type))};
}

Place Place::member(std::string_view name) const {
  std::string path = kind == Kind::Pointed ? text + "->" : load() + ".";
  path += name;
  return {Kind::Object, std::move(path)};
}

Place Place::part(std::uint32_t bit, BasicDataType type) const {
  const char* const own = type == BasicDataType::Bool ? nullptr : refhost::cType(type);
  if (kind == Kind::Part) return {kind, text, own, first + bit};
  return {Kind::Part, load(), own, bit};
}

std::string Place::load() const {
  switch (kind) {
    case Kind::Object:
      return text;
    case Kind::Pointed:
      return "(*" + text + ")";
    case Kind::Part:
      if (cType != nullptr) return fmt::format("VEL_PART({}, {}, {})", cType, text, first);
      return fmt::format("vgbit(({}, {}))", text, first);
    case Kind::MemoryBit:
      return fmt::format("gbit({})", text);
    case Kind::Memory:
      return fmt::format("VEL_MEM({}, {})", cType, text);
  }
  return {};
}

std::string Place::store(std::string_view value) const {
  if (kind == Kind::Part) {
    return cType == nullptr
               ? fmt::format("vsbit({}, {}, {})", text, first, value)
               : fmt::format("VEL_SET_PART({}, {}, {}, {})", cType, text, first, value);
  }
  if (kind == Kind::MemoryBit) return fmt::format("sbit({}, {})", text, value);
  if (kind != Kind::Object) return load().append(" = ").append(value);
  // C compilers warn of a variable that is assigned to itself.
  if (isSame(value, text)) return "(void)" + text;
  // Most places are objects, so this text is built with one allocation.
  std::string statement;
  statement.reserve(text.size() + 3 + value.size());
  statement.append(text).append(" = ").append(value);
  return statement;
}

std::string Place::address(std::string_view pointer) const {
  if (kind == Kind::Pointed) return text;
  // The cast is safe: device memory is aligned, and each address is a multiple of its cell's size.
  if (kind == Kind::Memory) return fmt::format("({})(void*)&{}", pointer, load());
  return "&" + load();
}

std::string enclosed(const std::string& text) { return isEnclosed(text) ? text : "(" + text + ")"; }

std::string_view unparenthesized(std::string_view text) {
  // `({` begins a statement expression.
  const bool wrapped = text.size() > 2 && text[0] == '(' && text[1] != '{';
  if (!wrapped || !isEnclosed(text)) return text;
  return unparenthesized(text.substr(1, text.size() - 2));
}

std::string storeText(BasicDataType to, int capacity, const Place& place, const std::string& value,
                      BasicDataType from) {
  if (isText(to)) {
    const char* const function = to == BasicDataType::String ? "vel_string_set" : "vel_wstring_set";
    return fmt::format("{}({}, {}, {})", function, place.load(), capacity, value);
  }
  if (to == BasicDataType::LTime && from == BasicDataType::Time) {
    return place.store(fmt::format("(i64)({}) * 1000000", value));
  }
  if (isInteger(to) && from == BasicDataType::Pointer) {
    return place.store(fmt::format("({})(uintptr_t){}", cType(to), enclosed(value)));
  }
  // The analysis has warned of the narrowing; the cast keeps the C compiler from warning again.
  if (isInteger(to) && isInteger(from) && !widens(from, to)) {
    return place.store(fmt::format("({})({})", cType(to), value));
  }
  return place.store(value);
}

std::string storeText(const SymbolNames& names, const vel::SymbolDataType* to, const Place& place,
                      const std::string& value, BasicDataType from) {
  if (to == nullptr) return place.store(value);
  const BasicDataType kind = valueType(to);
  if (kind == BasicDataType::Pointer) {
    const std::string cast = fmt::format("({})", typeText(names, to));
    if (value.compare(0, cast.size(), cast) == 0) return place.store(value);
    const char* const number = isInteger(from) ? "(uintptr_t)" : "";
    return place.store(cast + number + enclosed(value));
  }
  const int capacity = isText(kind) ? stringLength(*to) + 1 : 0;
  return storeText(kind, capacity, place, value, from);
}

}  // namespace refhost
