#include "refhost/emit/place_writer.h"

#include <fmt/format.h>

#include <algorithm>

#include "hostkit/literal_text.h"
#include "refhost/emit/expression_writer.h"
#include "refhost/semantics/constants.h"

namespace refhost {

using vel::ASTNode;
using vel::TreeBuilder;

namespace {

// True if the place may alias one of another type, as C does not expect.
bool isDereference(const ASTNode& node) {
  if (node.type() != vel::ASTType::Expression) return false;
  const auto& expr = static_cast<const Expr&>(node);
  return expr.kind == ExprKind::Dereference || referenceNamed(expr) != nullptr ||
         (expr.kind == ExprKind::Element && typeOf(*expr.leaf(0)) == BasicDataType::Pointer);
}

// The variable or element of which `expr` names some bits, else `expr`.
const Expr* wholeOf(const Expr* expr) {
  while (expr->kind == ExprKind::Part) expr = static_cast<const Expr*>(expr->leaf(0));
  return expr;
}

}  // namespace

Place PlaceWriter::of(const Expr& expr) {
  using Kind = Place::Kind;
  if (!body_.heldPlaces.empty()) {
    const auto held = body_.heldPlaces.find(&expr);
    if (held != body_.heldPlaces.end()) return held->second;
  }
  const bool isTyped = expr.symbol != nullptr && expr.symbol->symbolType() == vel::Symbol::Typed;
  if (const auto* const named = isTyped ? dynamic_cast<const NamedValue*>(expr.symbol) : nullptr) {
    Place value{Kind::Object, "NULL"};
    if (valueType(expr.dataType) != BasicDataType::Pointer) {
      value.text.clear();
      appendInteger(named->value, value.text);
    }
    return value;
  }
  if (!isAccess(expr.kind)) return named(expr);
  if (expr.kind == ExprKind::Element) return element(expr);
  const auto& base = static_cast<const Expr&>(*expr.leaf(0));
  if (expr.kind == ExprKind::Part) {
    return of(base).part(static_cast<std::uint32_t>(expr.bitAccessOffset()), typeOf(expr));
  }
  if (expr.kind == ExprKind::Dereference) {
    // The value of a string is the address of its first character.
    std::string pointer;
    expressions_.append(base, pointer);
    return {isText(typeOf(expr)) ? Kind::Object : Kind::Pointed, std::move(pointer)};
  }
  const auto* const member = asVariable(expr.symbol);
  if (member == nullptr) return {};
  if (member->isLocated()) return of(*member);
  Place place = of(base).member(file_.names.of(*member));
  if (member->placedByInstance) return Place::ofLocated(file_.names, *member, place.text);
  if (member->indirect && !isTextType(member->dataType())) place.kind = Kind::Pointed;
  return place;
}

bool PlaceWriter::canMove(const Expr& expr) {
  const std::vector<const ASTNode*> parts = partsOf(expr);
  return anyNode(expr, [](const ASTNode& node) { return referenceNamed(node) != nullptr; }) ||
         !std::all_of(parts.begin(), parts.end(),
                      [](const ASTNode* part) { return isConstant(*part); });
}

std::vector<const ASTNode*> PlaceWriter::partsOf(const Expr& expr) {
  if (!isAccess(expr.kind)) return {};
  const auto& base = static_cast<const Expr&>(*expr.leaf(0));
  const bool points = expr.kind == ExprKind::Dereference ||
                      (expr.kind == ExprKind::Element && typeOf(base) == BasicDataType::Pointer);
  std::vector<const ASTNode*> parts;
  if (points) {
    parts.push_back(&base);
  } else {
    parts = partsOf(base);
  }
  for (int i = 1; expr.kind == ExprKind::Element && i < expr.leavesCount(); ++i) {
    parts.push_back(expr.leaf(i));
  }
  return parts;
}

std::string PlaceWriter::hold(const Expr& expr) {
  const Expr* const whole = wholeOf(&expr);
  if (!of(*whole).hasAddress()) return {};
  const vel::SymbolDataType* const type = whole->dataType;
  const bool text = isTextType(type);
  const std::string pointer = anyNode(*whole, isDereference) ? pointerText(file_.names, type)
                              : text ? characterType(*type) + std::string("*")
                                     : typeText(file_.names, type) + "*";
  const std::string address = expressions_.inOrder(partsOf(*whole), ExpressionWriter::Uses::Once,
                                                   [&] { return pointerTo(*whole, type); });
  const std::string name = body_.newName();
  body_.heldPlaces[whole] = {text ? Place::Kind::Object : Place::Kind::Pointed, name};
  return fmt::format("{} const {} = {};", pointer, name, address);
}

bool PlaceWriter::isHeld(const Expr& expr) const {
  return body_.heldPlaces.count(wholeOf(&expr)) != 0;
}

void PlaceWriter::release(const Expr& expr) { body_.heldPlaces.erase(wholeOf(&expr)); }

std::string PlaceWriter::bind(const Place& reference, const vel::SymbolDataType* type,
                              const Expr& target) {
  return expressions_.inOrder(partsOf(target), ExpressionWriter::Uses::Once, [&] {
    return Place{Place::Kind::Object, reference.text}.store(boundText(target, type));
  });
}

std::string PlaceWriter::passed(const Expr& value, const VarSymbol& parameter) {
  const vel::SymbolDataType* const type = parameter.dataType();
  const OpenArrayType* const open = asOpenArray(type);
  if (open == nullptr) {
    return parameter.reference ? boundText(value, type) : pointerTo(value, type);
  }
  const Place place = of(value);
  const auto* const array = dynamic_cast<const ArrayType*>(value.dataType);
  if (array == nullptr) return place.load();
  std::string low;
  std::string high;
  for (const Bounds& bounds : array->bounds) {
    const char* const separator = low.empty() ? "" : ", ";
    appendInteger(bounds.low, low += separator);
    appendInteger(bounds.high, high += separator);
  }
  return fmt::format("({}){{({}){}, {{{}}}, {{{}}}}}", typeText(file_.names, type),
                     elementPointerText(file_.names, *open->element), place.member("a").load(), low,
                     high);
}

std::string PlaceWriter::boundText(const Expr& target, const vel::SymbolDataType* type) {
  if (isNull(target)) return "NULL";
  return fmt::format("({}){}", pointerText(file_.names, type), pointerTo(target, type));
}

Place PlaceWriter::named(const Expr& expr) {
  const auto* const variable = asVariable(expr.symbol);
  if (variable == nullptr) {
    vel::HeapAddress address;
    file_.services.memory.parse(TreeBuilder::source(expr), address);
    return Place::ofAddress(address, file_.services.memory.raw(address), cType(typeOf(expr)));
  }
  // The default of an input or a member may name a constant of the unit, which is not in scope
  // here.
  if (variable->constant && variable->initial != nullptr && variable->owner != body_.unit &&
      !isShared(*variable)) {
    Place value;
    expressions_.operand(*variable->initial, value.text);
    return value;
  }
  return of(*variable);
}

// True of a variable in an object of the file: a global one, or one of the SETUP of a test.
bool PlaceWriter::isShared(const VarSymbol& variable) const {
  const UnitSymbol* const owner = variable.owner;
  if (owner == file_.services.symbols.globals()) return owner != nullptr;
  return owner != nullptr && owner != body_.unit && owner->node->testPart == TestPart::Setup;
}

Place PlaceWriter::element(const Expr& expr) {
  const auto& base = static_cast<const Expr&>(*expr.leaf(0));
  const auto* const array = dynamic_cast<const ArrayType*>(base.dataType);
  if (array != nullptr) return of(base).member("a[" + indexText(expr, *array) + "]");
  if (const OpenArrayType* const open = asOpenArray(base.dataType)) {
    const std::string whole = of(base).load();
    return {Place::Kind::Object, fmt::format("{}.a[{}]", whole, indexText(expr, *open, whole))};
  }
  // Not an array, but a pointer to its first element.
  std::string text;
  expressions_.append(base, text);
  if (isText(typeOf(expr))) text = fmt::format("(({}){})", arrayPointerText(*expr.dataType), text);
  return {Place::Kind::Object,
          fmt::format("{}[{}]", text, expressions_.expressionText(expr.leaf(1)))};
}

// The C array has one dimension, in row-major order.
std::string PlaceWriter::indexText(const Expr& expr, const ArrayType& array) {
  std::string text;
  Integer known = 0;
  Integer stride = array.count();
  for (std::size_t i = 0; i < array.bounds.size(); ++i) {
    const Bounds& bounds = array.bounds[i];
    ASTNode* const subscript = expr.leaf(static_cast<int>(i) + 1);
    stride /= bounds.count();
    if (const auto constant = constantInteger(*subscript)) {
      known += (*constant - bounds.low) * stride;
      continue;
    }
    if (!text.empty()) text += " + ";
    std::string low;
    std::string high;
    appendInteger(bounds.low, low);
    appendInteger(bounds.high, high);
    text += subscriptText(*subscript, low, high);
    if (stride != 1) text += fmt::format(" * {}", stride);
  }
  if (text.empty()) return textOf(known);
  return known == 0 ? text : fmt::format("{} + {}", text, known);
}

std::string PlaceWriter::indexText(const Expr& expr, const OpenArrayType& array,
                                   const std::string& whole) {
  std::string text;
  for (int i = 0; i < array.dimensions; ++i) {
    const std::string low = fmt::format("{}.low[{}]", whole, i);
    const std::string high = fmt::format("{}.high[{}]", whole, i);
    if (i > 1) text = "(" + text + ")";
    if (i > 0) text += fmt::format(" * (size_t)({} - {} + 1) + ", high, low);
    text += subscriptText(*expr.leaf(i + 1), low, high);
  }
  return text;
}

std::string PlaceWriter::subscriptText(const ASTNode& subscript, const std::string& low,
                                       const std::string& high) {
  const char* const function =
      typeOf(subscript) == BasicDataType::ULInt ? "vel_index_u64" : "vel_index";
  return fmt::format("{}({}, {}, {})", function,
                     expressions_.expressionText(const_cast<ASTNode*>(&subscript)), low, high);
}

Place PlaceWriter::of(const VarSymbol& variable) {
  using Kind = Place::Kind;
  if (variable.isLocated()) return Place::ofLocated(file_.names, variable);
  const bool output =
      variable.role == Role::Output && variable.owner->type() == vel::POUType::Function;
  const vel::SymbolDataType* const type = variable.dataType();
  const bool indirect =
      !isTextType(type) && asOpenArray(type) == nullptr && (variable.indirect || output);
  if (isShared(variable)) {
    return {indirect ? Kind::Pointed : Kind::Object,
            file_.names.of(*variable.owner).data + "." + file_.names.of(variable)};
  }
  const bool member =
      variable.owner->type() != vel::POUType::Function && variable.role != Role::Temp;
  std::string name;
  if (member) {
    body_.usesSelf = true;
    name = "self->";
  } else {
    body_.used.insert(&variable);
  }
  name += file_.names.of(variable);
  if (variable.placedByInstance) return Place::ofLocated(file_.names, variable, name);
  return {indirect ? Kind::Pointed : Kind::Object, std::move(name)};
}

std::string PlaceWriter::pointerTo(const Expr& value, const vel::SymbolDataType* type) {
  const Place place = of(value);
  return isTextType(type) ? place.load() : place.address(typeText(file_.names, type) + "*");
}

std::string PlaceWriter::store(const Expr& target, const std::string& value, BasicDataType from) {
  return storeText(file_.names, target.dataType, of(target), value, from);
}

}  // namespace refhost
