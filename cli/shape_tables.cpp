#include "cli/shape_tables.h"

#include <fmt/format.h>

namespace velc {

using refhost::ValueShape;

namespace {

const char* kindOf(const ValueShape& shape) {
  switch (shape.type) {
    case vel::BasicDataType::Real:
      return "VEL_RUN_F32";
    case vel::BasicDataType::LReal:
      return "VEL_RUN_F64";
    case vel::BasicDataType::String:
      return "VEL_RUN_STRING";
    case vel::BasicDataType::WString:
      return "VEL_RUN_WSTRING";
    default:
      return "VEL_RUN_BYTES";
  }
}

}  // namespace

const std::string& ShapeTables::nameOf(const ValueShape& shape) {
  const auto known = names_.find(&shape);
  if (known != names_.end()) return known->second;
  std::string fields;
  if (shape.element != nullptr) {
    fields = fmt::format("sizeof({}), {}, &{}, NULL, VEL_RUN_BYTES", shape.cType, shape.count,
                         nameOf(*shape.element));
  } else if (shape.isStructure) {
    std::string parts;
    for (const ValueShape::Member& member : shape.members) {
      parts += fmt::format("  {{__builtin_offsetof({}, {}), &{}}},\n", shape.cType,
                           member.reference.substr(1), nameOf(*member.shape));
    }
    const std::string name = fmt::format("vel_parts_{}", names_.size());
    text_ += fmt::format("static const vel_run_part {}[] = {{\n{}}};\n", name, parts);
    fields = fmt::format("sizeof({}), {}, NULL, {}, VEL_RUN_BYTES", shape.cType,
                         shape.members.size(), name);
  } else {
    fields = fmt::format("{}, 1, NULL, NULL, {}", shape.byteSize, kindOf(shape));
  }
  const std::string name = fmt::format("vel_shape_{}", names_.size());
  text_ += fmt::format("static const vel_run_shape {} = {{{}}};\n", name, fields);
  return names_.emplace(&shape, name).first->second;
}

}  // namespace velc
