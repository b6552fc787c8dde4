#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "tests/execution/program.h"

namespace execution {

const Type& typeOf(const std::string& name) {
  return *std::find_if(types().begin(), types().end(),
                       [&](const Type& type) { return type.name == name; });
}

Value value(const std::string& type, Wide number) {
  return generated::integer(typeOf(type), number);
}
Value text(const std::string& type, const std::string& units) {
  return {&typeOf(type), 0, 0, units};
}

std::vector<Value> samples(const Type& type) {
  std::vector<Value> result;
  const auto add = [&](const Value& sample) {
    const auto equal = [&](const Value& other) { return bytes(other) == bytes(sample); };
    if (std::none_of(result.begin(), result.end(), equal)) result.push_back(sample);
  };
  if (type.text()) return {text(type.name, ""), text(type.name, "Zz!"), text(type.name, "-999")};
  std::vector<Wide> limits = {0, 1, -1};
  if (type.kind == Type::Real) {
    using Single = std::numeric_limits<float>;
    using Double = std::numeric_limits<double>;
    const double greatest = type.bits == 32 ? double{Single::max()} : Double::max();
    const double least = type.bits == 32 ? double{Single::denorm_min()} : Double::denorm_min();
    for (const double x :
         {std::nan(""), 2.5,    HUGE_VAL, 0.0,   1.0,      0.5,          0.49, 0.49999999999999994,
          1.5,          127.5,  254.4,    255.5, 32767.49, 2147483647.4, 0.1,  3.25e-5,
          1e16,         2.5e17, greatest, least}) {
      add(generated::real(type, x));
      if (!std::isnan(x)) add(generated::real(type, -x));
    }
  } else {
    const Wide highest = (Wide{1} << (type.bits - 1)) - 1;
    limits.insert(limits.end(), {-highest - 1, highest, 2 * highest + 1, 86399999, 86400000});
  }
  for (const int bits : {7, 8, 15, 16, 24, 31, 32, 53, 63, 64}) {
    const Wide limit = Wide{1} << bits;
    limits.insert(limits.end(), {limit - 1, limit, -limit, -limit - 1});
  }
  for (const Wide limit : limits) {
    if (type.kind == Type::Real) {
      add(generated::real(type, static_cast<double>(limit)));
    } else if (generated::integer(type, limit).number == limit) {
      add(generated::integer(type, limit));
    }
  }
  return result;
}

std::vector<Value> few(const Type& type) {
  std::vector<Value> all = samples(type);
  if (all.size() > 5) all.erase(all.begin() + 5, all.end());
  return all;
}

std::string bytes(const Value& value) {
  const auto unit = static_cast<std::size_t>((value.type->bits + 7) / 8);
  return generated::bytes(value, unit * (value.type->text() ? value.text.size() + 1 : 1));
}

Value fromBytes(const Type& type, const std::string& bytes) {
  Value value{&type};
  const auto size = static_cast<std::size_t>((type.bits + 7) / 8);
  if (type.text()) {
    for (std::size_t i = 0; bytes[i] != 0; i += size) value.text += bytes[i];
  } else if (type.kind == Type::Real && size == sizeof(float)) {
    float single = 0;
    std::memcpy(&single, bytes.data(), size);
    value.real = single;
  } else if (type.kind == Type::Real) {
    std::memcpy(&value.real, bytes.data(), size);
  } else {
    std::uint64_t held = 0;
    std::memcpy(&held, bytes.data(), size);
    value = generated::integer(type, held);
  }
  return value;
}

}  // namespace execution
