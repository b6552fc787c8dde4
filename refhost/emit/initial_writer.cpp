#include "refhost/emit/initial_writer.h"

#include <fmt/format.h>

#include "hostkit/literal_text.h"
#include "refhost/semantics/constants.h"

namespace refhost {

// Sets the initial values of the type's parts, then of the type's declaration, then of the
// variable: each may override parts of the previous one.
void InitialWriter::initialise(const Place& place, const VarSymbol& variable) {
  const Type* const type = variable.dataType();
  if (variable.reference) {
    if (variable.initial == nullptr) return;
    body_.statement(expressions_.places.bind(place, type, *variable.initial));
    return;
  }
  const bool whole = variable.initial != nullptr && !isComposite(type);
  if (!whole) {
    setDefault(place, type);
    if (variable.typeInitial != nullptr) setInitial(place, type, *variable.typeInitial);
  }
  if (variable.initial != nullptr) setInitial(place, type, *variable.initial);
}

void InitialWriter::initialiseAll(const UnitSymbol& unit, bool kept) {
  for (const auto& variable : unit.variables()) {
    const bool isKept = variable->role != Role::Temp;
    if (isKept == kept && variable->role != Role::InOut) once(*variable);
  }
}

void InitialWriter::once(const VarSymbol& variable) {
  if (!file_.startValues.differFromZero(variable) || !initialised_.insert(&variable).second) return;
  if (variable.initial != nullptr) constantsIn(*variable.initial, variable);
  enter(variable, nullptr);
  initialise(expressions_.places.of(variable), variable);
}

void InitialWriter::setPlaces(const UnitSymbol& unit) {
  for (const auto& variable : unit.variables()) {
    if (!variable->placedByInstance) continue;
    const auto number = file_.services.configured.open.countBefore(*variable, nullptr);
    body_.statement(fmt::format("self->{} = vel_places[{}]", file_.names.of(*variable), number));
  }
}

void InitialWriter::enter(const VarSymbol& variable, const vel::SymbolDataType* structure) {
  OpenPlaces& open = file_.services.configured.open;
  if (open.countIn(variable.dataType()) == 0) return;
  const auto number = open.countBefore(variable, structure);
  places_ = number == 0 ? "vel_places" : fmt::format("vel_places + {}", number);
}

void InitialWriter::setConfigured(const ConfiguredVariables::Root& root, const Place& unit) {
  for (const ConfiguredVariables::Initial& initial : root.initials) {
    Place place = unit;
    for (const auto& [variable, element] : initial.path) {
      if (variable == nullptr) {
        place = place.member(fmt::format("a[{}]", element));
      } else if (variable->isLocated()) {
        place = Place::ofLocated(file_.names, *variable);
      } else {
        place = place.member(file_.names.of(*variable));
        if (variable->placedByInstance)
          place = Place::ofLocated(file_.names, *variable, place.text);
      }
    }
    setInitial(place, initial.type, *initial.value);
  }
}

void InitialWriter::constantsIn(const vel::ASTNode& value, const VarSymbol& of) {
  anyNode(value, [&](const vel::ASTNode& node) {
    if (node.type() != vel::ASTType::Expression) return false;
    const auto* const named = asVariable(static_cast<const Expr&>(node).symbol);
    const bool before =
        named != nullptr && named->constant && named->owner == of.owner && named->role == of.role;
    if (before) once(*named);
    return false;
  });
}

std::string InitialWriter::text(const VarSymbol& input) {
  const std::string name = body_.newName();
  return body_.statementExpression([&] {
    body_.line(declaration(file_.names, input.dataType(), name) + " = {0};");
    initialise({Place::Kind::Object, name}, input);
    body_.statement(name);
  });
}

void InitialWriter::setDefault(const Place& place, const Type* type) {
  if (!file_.startValues.differFromZero(type)) return;
  if (const auto* const array = dynamic_cast<const ArrayType*>(type)) {
    const std::uint64_t each = file_.services.configured.open.countIn(array->element);
    const std::string places = places_;
    const auto set = [&](const Place& element, const std::string& index) {
      if (each != 0) places_ = fmt::format("{} + {} * {}", places, index, each);
      setDefault(element, array->element);
      if (array->elementInitial == nullptr) return;
      setInitial(element, array->element, *array->elementInitial);
    };
    forElements(place, "0", std::to_string(array->count()), set);
    places_ = places;
  } else if (const auto* const structure = dynamic_cast<const StructType*>(type)) {
    callInit(file_.names.of(*structure).init, place, type);
  } else if (const auto* const instance = dynamic_cast<const InstanceType*>(type)) {
    callInit(file_.names.of(*instance->unit).init, place, type);
  } else {
    std::string number;
    appendInteger(implicitInitial(type), number);
    body_.statement(place.store(number));
  }
}

void InitialWriter::callInit(const std::string& init, const Place& place, const Type* type) {
  const bool takesPlaces = file_.services.configured.open.countIn(type) != 0;
  body_.statement(
      fmt::format("{}({}{})", init, place.address({}), takesPlaces ? ", " + places_ : ""));
}

void InitialWriter::setInitial(const Place& place, const Type* type, const Expr& value) {
  if (const auto* const array = dynamic_cast<const ArrayType*>(type)) {
    std::int64_t next = 0;
    if (value.kind == ExprKind::ArrayValue) {
      setItems(place, {*array, value}, value, 0, next);
      return;
    }
    if (value.kind == ExprKind::Repeat) {
      setRepeated(place, {*array, value}, value, next);
      return;
    }
  }
  if (value.kind == ExprKind::StructValue) {
    for (int i = 0; i < value.leavesCount(); ++i) {
      const ASTNode& field = *value.leaf(i);
      const VarSymbol& member = *memberOf(type, static_cast<const Text&>(*field.leaf(0)).text());
      const auto& part = static_cast<const Expr&>(*field.leaf(1));
      if (member.reference) {
        body_.statement(expressions_.places.bind(place.member(file_.names.of(member)),
                                                 member.dataType(), part));
        continue;
      }
      setInitial(place.member(file_.names.of(member)), member.dataType(), part);
    }
    return;
  }
  std::string text;
  const auto constant = isInteger(valueType(type)) ? constantInteger(value) : std::nullopt;
  if (constant && literalOf(value) == nullptr) {
    appendInteger(*constant, text);
  } else {
    text = expressions_.expressionText(const_cast<Expr*>(&value));
  }
  body_.statement(storeText(file_.names, type, place, text, typeOf(value)));
}

void InitialWriter::setItems(const Place& place, const ArrayValues& values, const Expr& list,
                             int first, std::int64_t& next) {
  for (int i = first; i < list.leavesCount(); ++i) {
    const auto& item = static_cast<const Expr&>(*list.leaf(i));
    if (item.kind == ExprKind::Repeat) {
      setRepeated(place, values, item, next);
    } else if (values.rows) {
      std::int64_t element = next;
      setItems(place, values.row(item), item, 0, element);
      next += values.step();
    } else {
      setInitial(place.member(fmt::format("a[{}]", next++)), values.array.element, item);
    }
  }
}

// A single repeated value is set in a loop, several are set one by one.
void InitialWriter::setRepeated(const Place& place, const ArrayValues& values, const Expr& repeat,
                                std::int64_t& next) {
  const auto times = static_cast<std::int64_t>(constantInteger(*repeat.leaf(0)).value_or(0));
  const auto* const only =
      repeat.leavesCount() == 2 ? static_cast<const Expr*>(repeat.leaf(1)) : nullptr;
  if (repeat.leavesCount() == 1) {
    next += times * values.step();
  } else if (only != nullptr && only->kind != ExprKind::Repeat && !values.rows) {
    const std::string from = std::to_string(next);
    next += times;
    if (constantInteger(*only) == 0 && !file_.startValues.differFromZero(&values.array)) return;
    forElements(place, from, std::to_string(next), [&](const Place& element, const std::string&) {
      setInitial(element, values.array.element, *only);
    });
  } else {
    for (std::int64_t i = 0; i < times; ++i) setItems(place, values, repeat, 1, next);
  }
}

template <typename Set>
void InitialWriter::forElements(const Place& place, const std::string& from, const std::string& end,
                                Set set) {
  const std::string index = fmt::format("vel_i{}", body_.depth());
  body_.line(fmt::format("for (size_t {0} = {1}; {0} < {2}; ++{0}) {{", index, from, end));
  body_.indent();
  set(place.member(fmt::format("a[{}]", index)), index);
  body_.outdent();
  body_.line("}");
}

}  // namespace refhost
