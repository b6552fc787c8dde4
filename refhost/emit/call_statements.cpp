// Calls that are statements, and calls with EN and ENO.
#include <fmt/format.h>

#include <algorithm>

#include "refhost/emit/assertion_writer.h"
#include "refhost/emit/declarations.h"
#include "refhost/emit/statement_writer.h"

namespace refhost {
namespace {

bool isSubscriptOrDereference(const vel::ASTNode& node) {
  if (node.type() != vel::ASTType::Expression) return false;
  const ExprKind kind = static_cast<const Expr&>(node).kind;
  return kind == ExprKind::Element || kind == ExprKind::Dereference ||
         referenceNamed(node) != nullptr;
}

// True if the place depends on a variable that receives an output.
bool dependsOnOutput(const Expr& place, const std::vector<Binding>& bindings) {
  return std::any_of(bindings.begin(), bindings.end(), [&place](const Binding& binding) {
    const bool other = binding.parameter->role == Role::Output && binding.value != &place;
    const vel::Symbol* const written = other ? binding.value->symbol : nullptr;
    return written != nullptr && anyNode(place, [written](const vel::ASTNode& node) {
             return node.type() == vel::ASTType::Expression &&
                    static_cast<const Expr&>(node).symbol == written;
           });
  });
}

}  // namespace

std::string StatementWriter::beginEnabled(const Call& call) {
  std::string flag = "1";
  if (call.enable != nullptr) {
    flag = expressions_.expressionText(call.enable->leaf(1));
    if (call.enabled != nullptr) {
      const std::string kept =
          body_.temporary(file_.services.symbols.elementary(BasicDataType::Bool));
      body_.statement(fmt::format("{} = {}", kept, flag));
      flag = kept;
    }
    body_.line(fmt::format("if ({}) {{", flag));
    body_.indent();
  }
  return flag;
}

void StatementWriter::endEnabled(const Call& call, const std::string& flag) {
  if (call.enable != nullptr) {
    body_.outdent();
    body_.line("}");
  }
  if (call.enabled != nullptr) body_.statement(calls_.storeEnabled(call, flag));
}

void StatementWriter::callStatement(const Call& call) {
  if (call.testFunction() != nullptr) {
    AssertionWriter(file_, body_, expressions_).write(call);
    return;
  }
  const std::string flag = beginEnabled(call);
  if (call.instance != nullptr) {
    instanceCall(call);
  } else {
    const std::string text = calls_.plainText(call);
    body_.statement(call.dataType != nullptr ? "(void)(" + text + ")" : text);
  }
  endEnabled(call, flag);
}

Place StatementWriter::calledInstance(const Call& call) {
  const auto& callee = *call.instance;
  Place instance = places_.of(callee);
  if (!anyNode(callee, isSubscriptOrDereference)) return instance;
  const std::string pointer = body_.temporaryPointer(callee.dataType);
  body_.statement(fmt::format("{} = {}", pointer, places_.pointerTo(callee, callee.dataType)));
  return {Place::Kind::Pointed, pointer};
}

void StatementWriter::instanceCall(const Call& call) {
  const auto& callee = *call.instance;
  const UnitSymbol& block = *static_cast<const InstanceType*>(callee.dataType)->unit;
  calls_.record(call, block);
  runInstance(call, block, calledInstance(call));
}

void StatementWriter::runInstance(const Call& call, const UnitSymbol& block,
                                  const Place& instance) {
  const std::vector<Binding> bindings = bindArguments(call, block);
  const auto placeOf = [&](const VarSymbol& parameter) {
    return parameter.iecAddress().area != 0 ? places_.of(parameter)
                                            : instance.member(file_.names.of(parameter));
  };
  const bool effects = file_.effects.in(call);
  for (const Binding& binding : bindings) {
    const VarSymbol& parameter = *binding.parameter;
    if (parameter.role == Role::Output) {
      if (!PlaceWriter::canMove(*binding.value)) continue;
      if (!effects && !dependsOnOutput(*binding.value, bindings)) continue;
      const std::string pointer = places_.hold(*binding.value);
      if (!pointer.empty()) body_.line(pointer);
      continue;
    }
    const Place member = placeOf(parameter);
    if (parameter.indirect) {
      body_.statement(member.store(places_.passed(*binding.value, parameter)));
      continue;
    }
    std::string value;
    expressions_.append(*binding.value, value);
    body_.statement(
        storeText(file_.names, parameter.dataType(), member, value, typeOf(*binding.value)));
  }
  for (const auto& parameter : block.variables()) {
    if (!parameter->isBitParameter() || parameter->role != Role::Input) continue;
    const Place member = instance.member(companion(*parameter));
    body_.statement(member.store(calls_.companionOf(valueOf(bindings, parameter.get()))));
  }
  body_.statement(fmt::format("{}({})", file_.names.of(block).body, instance.address({})));
  for (const Binding& binding : bindings) {
    const VarSymbol& parameter = *binding.parameter;
    if (parameter.role != Role::Output) continue;
    body_.statement(calls_.storeOutput(binding, placeOf(parameter).load()));
  }
}

}  // namespace refhost
