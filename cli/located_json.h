// JSON whose values know where they stand, for files that users write and that need messages with
// places.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velc {

struct TextSpan {
  std::size_t begin = 0;
  std::size_t end = 0;  // offset of the first byte behind it
};

struct LocatedJson {
  enum class Kind : std::uint8_t { Null, Flag, Number, Text, List, Object };
  struct Member;

  Kind kind = Kind::Null;
  TextSpan span;
  bool flag = false;
  double number = 0;
  std::string text;
  std::vector<Member> members;  // of a list, whose members have no keys, or an object
};

struct LocatedJson::Member {
  std::string key;
  TextSpan keySpan;
  LocatedJson value;
};

struct JsonFault {
  TextSpan span;
  std::string text;  // "unexpected '}'; expected string literal"
};

// Parses a text, which must have no byte order mark. False when it is not JSON, or nested deeper
// than a hundred levels; then `fault` says where and why.
bool parseLocated(std::string_view text, LocatedJson& root, JsonFault& fault);

}  // namespace velc
