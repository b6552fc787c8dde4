// Functions of texts, whose positions count from 1.
#include <algorithm>

#include "fuzz/programs/signatures.h"

namespace generated {
namespace {

Wide length(const Value& text) { return static_cast<Wide>(text.text.size()); }

std::string piece(const Value& text, Wide from, Wide count) {
  const Wide start = std::clamp<Wide>(from, 0, length(text));
  return text.text.substr(static_cast<std::size_t>(start),
                          static_cast<std::size_t>(std::clamp<Wide>(count, 0, length(text))));
}

bool has(const Value& text, Wide position) { return position >= 1 && position <= length(text); }

std::string replacement(const Value& in, const std::string& by, Wide count, Wide position) {
  if (!has(in, position)) return in.text;
  return piece(in, 0, position - 1) + by +
         piece(in, position - 1 + std::max<Wide>(count, 0), length(in));
}

std::string concatenated(const Values& v) {
  return v[0].text + v[1].text + (v.size() > 2 ? v[2].text : "");
}

std::string insertion(const Values& v) {
  const Wide at = v[2].number;
  if (at != 0 && !has(v[0], at)) return v[0].text;
  return piece(v[0], 0, at) + v[1].text + piece(v[0], at, length(v[0]));
}

// `texts` texts and then `numbers` integers give a text.
Operator textual(const char* name, int texts, int numbers, std::string (*compute)(const Values&)) {
  return {
      name, 0,
      [=](Random& random, const Type& result) {
        if (!result.text()) return Types();
        Types operands(static_cast<std::size_t>(texts), &result);
        for (int i = 0; i < numbers; ++i) {
          const auto isCount = [](const Type& type) { return type.integer() && type.bits < 16; };
          operands.push_back(random.chance(80) ? &type(Type::Signed, 16) : &any(random, isCount));
        }
        return operands;
      },
      [=](const Type& result, const Values& v) {
        return Value{&result, 0, 0, compute(v)};
      },
      Operator::Position};
}

}  // namespace

std::vector<Operator> textFunctions() {
  const Predicate isInt = is(Type::Signed, 16);
  return {
      {"LEN", 0, from(&Type::text, isInt),
       [](const Type& result, const Values& v) { return integer(result, length(v[0])); }},
      {"FIND", 0,
       [=](Random& random, const Type& result) {
         const Type& type = any(random, &Type::text);
         return isInt(result) ? Types{&type, &type} : Types();
       },
       [](const Type& result, const Values& v) {
         const std::size_t at = v[1].text.empty() ? std::string::npos : v[0].text.find(v[1].text);
         return integer(result, at == std::string::npos ? 0 : static_cast<Wide>(at) + 1);
       }},
      textual("LEFT", 1, 1, [](const Values& v) { return piece(v[0], 0, v[1].number); }),
      textual(
          "RIGHT", 1, 1,
          [](const Values& v) { return piece(v[0], length(v[0]) - v[1].number, length(v[0])); }),
      textual("MID", 1, 2,
              [](const Values& v) {
                return has(v[0], v[2].number) ? piece(v[0], v[2].number - 1, v[1].number) : "";
              }),
      textual("CONCAT", 2, 0, concatenated),
      textual("CONCAT", 3, 0, concatenated),
      textual("INSERT", 2, 1, insertion),
      textual("DELETE", 1, 2,
              [](const Values& v) { return replacement(v[0], "", v[1].number, v[2].number); }),
      textual("REPLACE", 2, 2, [](const Values& v) {
        return replacement(v[0], v[1].text, v[2].number, v[3].number);
      })};
}

}  // namespace generated
