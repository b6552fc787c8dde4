#include "refhost/semantics/sizes.h"

#include <algorithm>
#include <limits>

#include "refhost/semantics/parts.h"
#include "refhost/services/dependency_order.h"
#include "refhost/syntax/parser.h"

namespace refhost {

using vel::TreeBuilder;

namespace {

// Half of what systems usually give a thread, since C compilers take more for values of their own.
constexpr std::uint64_t kMostStack = std::uint64_t{4} << 20;

// Layouts have no sizes of more than 64 bits.
std::string bytesText(Integer bytes) {
  constexpr Integer kMost = std::numeric_limits<std::uint64_t>::max();
  return bytes < kMost ? textOf(bytes) : "more than " + textOf(kMost - 1);
}

// The place in the source at which a composite type is declared.
const ASTNode& declarationOf(const vel::SymbolDataType& type) {
  if (const auto* const array = dynamic_cast<const ArrayType*>(&type)) return *array->declared;
  if (const auto* const structure = dynamic_cast<const StructType*>(&type)) {
    return structure->declared;
  }
  return *static_cast<const InstanceType&>(type).unit->node->leaf(Unit::kName);
}

}  // namespace

void Sizes::checkTypes() {
  for (const UnitSymbol* const unit : services_.symbols.units()) {
    if (unit->fbType() != nullptr) checkType(*unit->fbType());
  }
  for (const auto& type : services_.symbols.ownedTypes()) checkType(*type);
  for (const Type* const type : services_.layouts.cyclic()) {
    const bool block = isInstance(type);
    say(declarationOf(*type), block ? message::kContainsItself : message::kTypeContainsItself,
        displayName(type));
  }
}

// Of types within each other only the innermost is reported.
void Sizes::checkType(const Type& type) {
  if (!isComposite(&type) || !isExcessive(type)) return;
  for (const Type* const part : compositeParts(type)) {
    if (isExcessive(*part)) return;
  }
  typeReported_ = true;
  const Layout layout = *services_.layouts.of(&type);
  if (layout.depth > kMaxNesting) {
    say(declarationOf(type), message::kNestingTooDeep, std::to_string(kMaxNesting));
  } else {
    say(declarationOf(type), message::kTooLarge, displayName(&type), bytesText(layout.size),
        std::to_string(Layout::kMostBytes));
  }
}

bool Sizes::isExcessive(const Type& type) {
  const auto layout = services_.layouts.of(&type);
  return layout && (layout->depth > kMaxNesting || layout->size > Layout::kMostBytes);
}

std::uint64_t Sizes::sizeOf(const Type* type) {
  const auto layout = services_.layouts.of(type);
  return layout ? std::min(layout->size, Layout::kMostBytes) : 0;
}

// The caller copies inputs and holds the result.
void Sizes::countCall(const UnitSymbol& callee) {
  if (context_.unit == nullptr) return;
  Frame& frame = frameOf(*context_.unit);
  frame.callees.insert(&frameOf(callee));
  if (callee.type() != vel::POUType::Function) return;
  for (const auto& variable : callee.variables()) {
    const bool held = variable->role == Role::Input || variable->role == Role::Output ||
                      variable->role == Role::Result;
    if (held && !variable->indirect) frame.own += sizeOf(variable->dataType());
  }
}

void Sizes::countTemporary(const Type* type) {
  if (context_.unit != nullptr) frameOf(*context_.unit).own += sizeOf(type);
}

Sizes::Frame& Sizes::frameOf(const UnitSymbol& unit) {
  Frame& frame = frames_[&unit];
  if (frame.unit != nullptr) return frame;
  frame.unit = &unit;
  const bool function = unit.type() == vel::POUType::Function;
  for (const auto& variable : unit.variables()) {
    const bool local =
        variable->role == Role::Temp ||
        (function && (variable->role == Role::Local || variable->role == Role::Result));
    if (local) frame.own += sizeOf(variable->dataType());
  }
  return frame;
}

void Sizes::checkUnits() {
  const auto callees = [](const Frame& frame) {
    return std::vector<Frame*>(frame.callees.begin(), frame.callees.end());
  };
  for (const UnitSymbol* const unit : services_.symbols.units()) {
    visitDependencies(
        frameOf(*unit), callees, [](const auto&) {},
        [this](Frame& frame, const std::vector<Frame*>& called) {
          std::uint64_t deepest = 0;
          for (const Frame* const callee : called) deepest = std::max(deepest, callee->whole);
          frame.whole = frame.own + deepest;
          // A caller of a unit that has been reported is not reported itself.
          if (frame.whole <= kMostStack || deepest > kMostStack) return;
          const Unit& node = *frame.unit->node;
          say(*node.leaf(Unit::kName), message::kTooMuchStack,
              frame.unit->isTest() ? Tests::nameOf(node) : frame.unit->name(),
              std::to_string(frame.whole), std::to_string(kMostStack));
        });
  }
  checkMemory();
}

void Sizes::checkMemory() {
  Integer total = 0;
  const auto add = [&](const UnitSymbol& unit, const ASTNode& place, std::string_view name) {
    const auto layout = services_.layouts.ofVariables(unit);
    if (!layout || total > Integer{Layout::kMostBytes}) return;
    total += Integer{layout->size};
    if (total <= Integer{Layout::kMostBytes} || typeReported_) return;
    say(place, message::kTooMuchMemory, name, bytesText(total), std::to_string(Layout::kMostBytes));
  };
  const UnitSymbol* const globals = services_.symbols.globals();
  if (globals != nullptr && !globals->variables().empty()) {
    add(*globals, *globals->variables().back()->declared, globals->variables().back()->name());
  }
  for (const ProgramInstance& instance : services_.configuration.instances) {
    add(*instance.program, *instance.node->leaf(0), instance.name);
  }
  for (const UnitSymbol* const unit : services_.symbols.units()) {
    const bool runs = unit->type() == vel::POUType::Program && !unit->instantiated;
    if (runs) add(*unit, *unit->node->leaf(Unit::kName), unit->name());
  }
}

}  // namespace refhost
