#include "refhost/services/types.h"

namespace refhost {

StringType::StringType(BasicDataType type, int characters)
    : SymbolDataType(type == BasicDataType::String ? "STRING" : "WSTRING", type),
      length_(characters) {}

int StringType::byteSize() const {
  return (length_ + 1) * (dataType() == BasicDataType::String ? 1 : 2);
}

bool isBoolNumber(const LiteralValue& literal) {
  return literal.form == LiteralForm::Integer && isInteger(literal.type) && !literal.fixedType &&
         !literal.negative && literal.magnitude <= 1;
}

int bitCount(const vel::SymbolDataType& type) {
  if (type.dataType() == BasicDataType::Bool) return 1;
  if (const auto* const text = dynamic_cast<const StringType*>(&type)) return 8 * text->byteSize();
  const ElementaryType* const row = elementaryType(type.dataType());
  return row != nullptr ? 8 * row->size : 0;
}

bool sameType(const vel::SymbolDataType& a, const vel::SymbolDataType& b) {
  if (&a == &b) return true;
  if (a.dataType() != b.dataType()) return false;
  return isText(a.dataType()) ? stringLength(a) == stringLength(b)
                              : a.dataType() < BasicDataType::Pointer;
}

int stringLength(const vel::SymbolDataType& type) {
  const auto* declared = dynamic_cast<const StringType*>(&type);
  return declared != nullptr ? declared->length() : StringType::kDefaultLength;
}

}  // namespace refhost
