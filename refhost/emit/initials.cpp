// Initial values in C. Every variable's memory is zero before they are set.
#include <fmt/format.h>

#include <utility>

#include "hostkit/literal_text.h"
#include "refhost/emit/c_generator.h"
#include "refhost/semantics/constants.h"

namespace refhost {

// Later initial values are those of a part, or override earlier ones: of the type, of its
// declaration, of the variable.
void CGenerator::initialise(const Place& place, const VarSymbol& variable) {
  const Type* const type = variable.dataType();
  const bool whole = variable.initial != nullptr && !isComposite(type);
  if (!whole) {
    setDefault(place, type);
    if (variable.typeInitial != nullptr) setInitial(place, type, *variable.typeInitial);
  }
  if (variable.initial != nullptr) setInitial(place, type, *variable.initial);
}

std::string CGenerator::initialText(const VarSymbol& input) {
  const std::string name = fmt::format("vel_t{}", ++temporaries_);
  std::string before = std::exchange(body_, {});
  ++indent_;
  line(declaration(input.dataType(), name) + " = {0};");
  initialise({Place::Kind::Object, name}, input);
  line(name + ";");
  --indent_;
  line("})");
  body_.pop_back();
  return "({\n" + std::exchange(body_, std::move(before));
}

void CGenerator::setDefault(const Place& place, const Type* type) {
  if (!startValues_.differFromZero(type)) return;
  if (const auto* const array = dynamic_cast<const ArrayType*>(type)) {
    forElements(place, "0", std::to_string(array->count()), [&](const Place& element) {
      setDefault(element, array->element);
      if (array->elementInitial == nullptr) return;
      setInitial(element, array->element, *array->elementInitial);
    });
  } else if (const auto* const structure = dynamic_cast<const StructType*>(type)) {
    line(fmt::format("{}({});", structure->cInit, place.address({})));
  } else if (const auto* const instance = dynamic_cast<const InstanceType*>(type)) {
    line(fmt::format("{}({});", instance->unit->cInit, place.address({})));
  } else {
    std::string number;
    appendInteger(implicitInitial(type), number);
    line(place.store(number) + ";");
  }
}

void CGenerator::setInitial(const Place& place, const Type* type, const Expr& value) {
  if (const auto* const array = dynamic_cast<const ArrayType*>(type)) {
    std::int64_t next = 0;
    if (value.op() == op::kArrayValue) {
      setElements(place, *array, value, 0, next);
      return;
    }
    if (value.op() == op::kRepeat) {
      setRepeated(place, *array, value, next);
      return;
    }
  }
  if (value.op() == op::kStructValue) {
    for (int i = 0; i < value.leavesCount(); ++i) {
      const ASTNode& field = *value.leaf(i);
      const VarSymbol& member = *memberOf(type, static_cast<const Text&>(*field.leaf(0)).text());
      setInitial(place.member(member.cName), member.dataType(),
                 static_cast<const Expr&>(*field.leaf(1)));
    }
    return;
  }
  std::string text;
  const auto constant = isInteger(valueType(type)) ? constantInteger(value) : std::nullopt;
  if (constant && literalOf(value) == nullptr) {
    appendInteger(*constant, text);
  } else {
    text = expressionText(const_cast<Expr*>(&value));
  }
  line(storeText(type, place, text, typeOf(value)) + ";");
}

// The items of `list` from leaf `first` on go to the elements from `next` on.
void CGenerator::setElements(const Place& place, const ArrayType& array, const Expr& list,
                             int first, std::int64_t& next) {
  for (int i = first; i < list.leavesCount(); ++i) {
    const auto& item = static_cast<const Expr&>(*list.leaf(i));
    if (item.op() == op::kRepeat) {
      setRepeated(place, array, item, next);
    } else if (isRow(array, item)) {
      setElements(place, array, item, 0, next);
    } else {
      setInitial(place.member(fmt::format("a[{}]", next++)), array.element, item);
    }
  }
}

// One value many times is set in a loop, several values are set one by one.
void CGenerator::setRepeated(const Place& place, const ArrayType& array, const Expr& repeat,
                             std::int64_t& next) {
  const std::int64_t times = constantInteger(*repeat.leaf(0)).value_or(0);
  const auto* const only =
      repeat.leavesCount() == 2 ? static_cast<const Expr*>(repeat.leaf(1)) : nullptr;
  if (repeat.leavesCount() == 1) {
    next += times;
  } else if (only != nullptr && only->op() != op::kRepeat && !isRow(array, *only)) {
    const std::string from = std::to_string(next);
    next += times;
    if (constantInteger(*only) == 0 && !startValues_.differFromZero(&array)) return;
    forElements(place, from, std::to_string(next),
                [&](const Place& element) { setInitial(element, array.element, *only); });
  } else {
    for (std::int64_t i = 0; i < times; ++i) setElements(place, array, repeat, 1, next);
  }
}

// `from` and `end` are C texts.
template <typename Set>
void CGenerator::forElements(const Place& place, const std::string& from, const std::string& end,
                             Set set) {
  const std::string index = fmt::format("vel_i{}", indent_);
  line(fmt::format("for (size_t {0} = {1}; {0} < {2}; ++{0}) {{", index, from, end));
  ++indent_;
  set(place.member(fmt::format("a[{}]", index)));
  --indent_;
  line("}");
}

// The functions that give structures the initial values of their members.
std::string CGenerator::structureInits() {
  std::string out;
  for (const auto& owned : services_.symbols.ownedTypes()) {
    const auto* const structure = dynamic_cast<const StructType*>(owned.get());
    if (structure == nullptr || !startValues_.differFromZero(structure)) continue;
    body_.clear();
    indent_ = 1;
    for (const auto& member : structure->members()) {
      initialise({Place::Kind::Object, "self->" + member->cName}, *member);
    }
    out += fmt::format("\nstatic void {}(struct {}* self) {{\n{}}}\n", structure->cInit,
                       structure->cName, body_);
  }
  return out;
}

}  // namespace refhost
