#include "bench/operators/workload.h"

#include <dlfcn.h>

#include <stdexcept>

using vel::BasicDataType;

namespace {

struct Unit : vel::SymbolPOU {
  Unit(vel::InternalInterface* ii, const char* name, vel::POUType type, vel::Symbol* parameter)
      : SymbolPOU(ii, name, type, nullptr) {
    params_.push_back(dynamic_cast<vel::SymbolVar*>(parameter));
  }
};

}  // namespace

Symbols::Symbols(vel::InternalInterface* ii)
    : intType(std::make_unique<vel::SymbolDataType>("INT", BasicDataType::Int)),
      realType(std::make_unique<vel::SymbolDataType>("REAL", BasicDataType::Real)),
      variable(std::make_unique<vel::SymbolVar>(
          "conveyor_speed", dynamic_cast<vel::SymbolDataType*>(intType.get()), 0)),
      bitParameter(std::make_unique<vel::SymbolVar>("valve_positions", nullptr,
                                                    vel::SymbolVar::kBitParameter)),
      input(std::make_unique<vel::SymbolVar>("in", nullptr, vel::SymbolVar::kInput)),
      function(std::make_unique<Unit>(ii, "function", vel::POUType::Function, input.get())),
      program(std::make_unique<Unit>(ii, "program", vel::POUType::Program, bitParameter.get())) {}
Symbols::~Symbols() = default;

std::vector<Workload> workloads(const Symbols& symbols) {
  using floors::Start;
  // The texts are too long for a string's own room, so that no copy of them goes unseen.
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

  vel::HeapAddress address;
  address.area = 1;
  address.unitSize = 1;
  address.position = 1011;
  address.bitIndex = 3;
  CannedAnswers declared;
  declared.dataType = symbols.intType.get();
  declared.variable = symbols.variable.get();
  declared.unit = symbols.function.get();
  declared.any = symbols.variable.get();
  CannedAnswers rotated = declared;
  rotated.any = symbols.intType.get();
  CannedAnswers fromReal = declared;
  fromReal.dataType = symbols.realType.get();
  CannedAnswers inProgram = declared;
  inProgram.unit = symbols.program.get();
  CannedAnswers addressed = declared;
  addressed.address = address;

  // clang-format off
  return {
      {"typed conversion", "INT_TO_REAL", {integer}, none, 2, Start::UpperName, true, floors::checkTyped, floors::generateTyped, floors::copyText, declared},
      {"typed conversion, rounding", "REAL_TO_INT", {real}, none, 2, Start::UpperName, true, floors::checkTyped, floors::generateRounded, floors::copyText, fromReal},
      {"typed conversion, to BOOL", "INT_TO_BOOL", {integer}, none, 2, Start::UpperName, true, floors::checkTyped, floors::generateToBool, floors::copyText, declared},
      {"generic conversion", "TO_REAL", {integer}, none, 2, Start::UpperName, true, floors::checkGeneric, floors::generateGeneric, floors::copyText, declared},
      {"truncation", "TRUNC", {real}, none, 2, Start::UpperName, true, floors::checkTrunc, floors::generateTrunc, floors::copyText, declared},
      {"string to value", "STRING_TO_INT", {text}, none, 2, Start::CountedInputs, false, floors::checkFromString, floors::generateCall, floors::copyText, declared},
      {"value to string", "INT_TO_STRING", {integer}, none, 2, Start::UpperCountedInputs, true, floors::checkToString, floors::generateToString, floors::copyText, declared},
      {"BCD", "BCD_TO_INT", {byte}, none, 2, Start::CountedInputs, false, floors::checkFromBcd, floors::generateCall, floors::copyText, declared},
      {"limit", "LIMIT", {integer, limit, limit}, none, 4, Start::Nothing, false, floors::checkLimit, floors::generateCall, floors::copyText, declared},
      {"minimum, maximum", "MAX", {integer, limit}, integer, 3, Start::Nothing, false, floors::checkMax, floors::generateCall, floors::copyText, declared},
      {"selection", "SEL", {flag, integer, limit}, none, 4, Start::Nothing, false, floors::checkSelect, floors::generateCall, floors::copyText, declared},
      {"shift", "SHL", {integer, limit}, none, 3, Start::Nothing, false, floors::checkShift, floors::generateShift, floors::copyText, declared},
      {"multiplexer", "MUX", {integer, integer, limit}, none, 2, Start::Nothing, false, floors::checkMux, floors::generateMux, floors::copyText, declared},
      {"rotation", "ROL", {integer, limit}, integer, 3, Start::Nothing, false, floors::checkRotate, floors::generateRotate, floors::namedMacroText, rotated},
      {"edge", "MEP", {flag}, none, 2, Start::Nothing, false, floors::checkEdge, floors::generateEdge, floors::copyText, declared},
      {"move", "MOVE", {integer}, integer, 2, Start::SymbolTable, false, floors::checkMove, floors::generateMove, floors::copyText, declared},
      {"numeric function", "SQRT", {real}, none, 2, Start::CountedInputs, false, floors::checkNumeric, floors::generateCall, floors::copyText, declared},
      {"size", "SIZEOF", {integer}, none, 0, Start::Sized, false, floors::checkSizeof, floors::generateSizeof, floors::copyText, declared},
      {"address", "ADR", {integer}, none, 2, Start::Nothing, false, floors::checkAdr, floors::generateAdr, floors::copyText, declared},
      {"direct I/O", "IRDBIT", {inputBit, flag}, none, 3, Start::Name, true, floors::checkReadBit, floors::generateReadBit, floors::refreshText, addressed},
      {"zone", "ZSET", {outputBit, outputBit}, none, 3, Start::Nothing, false, floors::checkZone, floors::generateZone, floors::copyText, addressed},
      {"bit of a parameter", "GETBITOFPARAM", {bits, integer}, none, 3, Start::Name, true, floors::checkGetBit, floors::generateGetBit, floors::copyText, inProgram},
  };
  // clang-format on
}

CreateRegistry loadPlugin() {
  void* library = dlopen(VELOPS_PLUGIN, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw std::runtime_error(dlerror());
  return reinterpret_cast<CreateRegistry>(dlsym(library, "CreateOpManager"));
}

Bench::Bench(CannedHost& host, const Workload& workload)
    : host_(host),
      workload_(workload),
      generator_(&host),
      operator_(host.registry->findOperator(workload.name)),
      call_(tree_.call(workload.name, workload.operands, workload.target)),
      refused_(tree_.call(workload.name,
                          std::vector<Operand>(workload.refusedCount, workload.operands.front()),
                          workload.target)),
      pouName_("filling_station_control") {
  host_.answers = workload.answers;
  staticCode_ = operator_->staticCode(&generator_);
}

CheckCall Bench::request(bool right) {
  messages_.clear();
  resultType_.clear();
  return {&host_, right ? call_ : refused_, messages_, resultType_, pouName_};
}

bool Bench::check(bool right) {
  const CheckCall call = request(right);
  return operator_->check(call.ii, call.invocation, call.messages, call.resultType, call.pouName);
}

bool Bench::checkFloor(bool right) {
  const CheckCall call = request(right);
  if (right) return workload_.checkFloor(call);
  return floors::refuseCount(call, workload_.refusalStart, workload_.refusalUpperCase);
}
