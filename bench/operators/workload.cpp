#include "bench/operators/workload.h"

#include <stdexcept>

using vel::BasicDataType;

namespace {

// Indices into kOperations.
enum : std::size_t { kCheckAccepted, kCheckRefused, kGenerate };

// Creates the call `name(operands)` in a program, assigned to `target` unless its source is empty.
vel::ASTNode* makeCall(hostkit::Tree& tree, const std::string& unitName, const char* name,
                       const std::vector<Operand>& operands, const Operand& target) {
  const auto variable = [&tree](const Operand& operand) {
    Expression* const made = tree.expression({operand.source}, Expression::Variable);
    made->setBasicType(operand.type);
    return made;
  };
  hostkit::Tree::Leaves parameters;
  for (const Operand& operand : operands) parameters.push_back(variable(operand));
  vel::ASTNode* const call = tree.invocation({}, tree.word({name}), {}, std::move(parameters));
  vel::ASTNode* statement = call;
  if (!target.source.empty()) {
    statement = tree.make<vel::ASTNode>({}, {variable(target), call}, hostkit::kStatementNode);
  }
  tree.unit(unitName, vel::POUType::Program, {statement});
  return call;
}

}  // namespace

Symbols::Symbols()
    : function(nullptr, "function", vel::POUType::Function),
      program(nullptr, "program", vel::POUType::Program) {
  function.addInput("in");
  program.addParameter(
      std::make_unique<vel::SymbolVar>("valve_positions", nullptr, vel::SymbolVar::kBitParameter));
}

std::vector<Workload> workloads(Symbols& symbols) {
  // Names are too long for the small-string optimization, so that copies of them are counted.
  const Operand integer{"conveyor_speed_setpoint", BasicDataType::Int};
  const Operand limit{"conveyor_speed_maximum", BasicDataType::Int};
  const Operand real{"boiler_temperature_mean", BasicDataType::Real};
  const Operand text{"operator_panel_message", BasicDataType::String};
  const Operand byte{"counter_of_filled_bottles", BasicDataType::USInt};
  const Operand flag{"emergency_stop_released", BasicDataType::Bool};
  const Operand bits{"valve_positions", BasicDataType::UInt};
  const Operand inputBit{"%IX1.3", BasicDataType::Bool};
  const Operand outputBit{"%QX1.3", BasicDataType::Bool};
  const Operand none;

  using Ready = ReadyAnswers::Ready;
  vel::Symbol* const variable = &symbols.variable;
  const Ready declared{&symbols.intType, variable, &symbols.function, variable, {}};
  const Ready rotated{&symbols.intType, variable, &symbols.function, &symbols.intType, {}};
  const Ready fromReal{&symbols.realType, variable, &symbols.function, variable, {}};
  const Ready inProgram{&symbols.intType, variable, &symbols.program, variable, {}};
  Ready addressed = declared;
  addressed.address.area = 1;
  addressed.address.unitSize = 1;
  addressed.address.position = 1011;
  addressed.address.bitIndex = 3;

  return {
      {"typed conversion", "INT_TO_REAL", {integer}, none, 2, declared},
      {"typed conversion, rounding", "REAL_TO_INT", {real}, none, 2, fromReal},
      {"typed conversion, to BOOL", "INT_TO_BOOL", {integer}, none, 2, declared},
      {"generic conversion", "TO_REAL", {integer}, none, 2, declared},
      {"truncation", "TRUNC", {real}, none, 2, declared},
      {"string to value", "STRING_TO_INT", {text}, none, 2, declared},
      {"value to string", "INT_TO_STRING", {integer}, none, 2, declared},
      {"BCD", "BCD_TO_INT", {byte}, none, 2, declared},
      {"limit", "LIMIT", {integer, limit, limit}, none, 4, declared},
      {"minimum, maximum", "MAX", {integer, limit}, integer, 3, declared},
      {"selection", "SEL", {flag, integer, limit}, none, 4, declared},
      {"shift", "SHL", {integer, limit}, none, 3, declared},
      {"multiplexer", "MUX", {integer, integer, limit}, none, 2, declared},
      {"rotation", "ROL", {integer, limit}, integer, 3, rotated},
      {"edge", "MEP", {flag}, none, 2, declared},
      {"move", "MOVE", {integer}, integer, 2, declared},
      {"numeric function", "SQRT", {real}, none, 2, declared},
      {"size", "SIZEOF", {integer}, none, 0, declared},
      {"address", "ADR", {integer}, none, 2, declared},
      {"direct I/O", "IRDBIT", {inputBit, flag}, none, 3, addressed},
      {"zone", "ZSET", {outputBit, outputBit}, none, 3, addressed},
      {"bit of a parameter", "GETBITOFPARAM", {bits, integer}, none, 3, inProgram},
  };
}

Bench::Bench(vel::OpManagerAPI& registry, const Workload& workload)
    : operator_(registry.findOperator(workload.name)),
      call_(makeCall(tree_, unitName_, workload.name, workload.operands, workload.target)),
      refused_(makeCall(tree_, unitName_, workload.name,
                        std::vector<Operand>(workload.refusedCount, workload.operands.front()),
                        workload.target)),
      answers_(workload.answers) {
  services_.operators = &registry;
  services_.settings.localIoAddress = "I:0-2048;Q:0-2048;";
  for (std::size_t operation = 0; operation < kOperations.size(); ++operation) {
    RecordingAnswers recorder(answers_, requests_[operation]);
    hostkit::Services services(&recorder);
    services.operators = services_.operators;
    services.settings = services_.settings;
    hostkit::TextGenerator generator(services);
    if (!perform(operation, services, generator)) {
      throw std::logic_error(std::string(workload.name) + " fails in " + kOperations[operation]);
    }
  }
}

bool Bench::perform(std::size_t operation, hostkit::Services& services, vel::Generator& generator) {
  messages_.clear();
  resultType_.clear();
  switch (operation) {
    case kCheckAccepted:
      return operator_->check(&services, call_, messages_, resultType_, unitName_);
    case kCheckRefused:
      return !operator_->check(&services, refused_, messages_, resultType_, unitName_) &&
             messages_.size() == 1;
    case kGenerate:
      return !operator_->generate(&generator, call_).empty();
    default:
      operator_->staticCode(&generator);
      return true;
  }
}
