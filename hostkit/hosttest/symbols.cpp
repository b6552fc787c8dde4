// Symbols: variables, program units, and the units of operators.
#include <memory>

#include "core/op_manager_api.h"
#include "host/text.h"
#include "hostkit/hosttest/duties.h"

namespace hosttest {
namespace {

using vel::POUType;
using vel::Symbol;

vel::SymbolPOU* unitNamed(HostUnderTest& host, const std::string& name) {
  return dynamic_cast<vel::SymbolPOU*>(find(host, name, "", Symbol::Pou));
}

vel::SymbolVar* variableNamed(HostUnderTest& host, const std::string& name, const std::string& unit,
                              Symbol::Type kind = Symbol::Variable) {
  return dynamic_cast<vel::SymbolVar*>(find(host, name, unit, kind));
}

void variablesAreFoundInTheirUnit(HostUnderTest& host) {
  Unit unit{"Main", POUType::Program, {{"b", "BOOL"}}};
  for (const ElementaryType& type : elementaryTypes()) {
    unit.variables.push_back({"of" + std::string(type.name), type.name});
  }
  const Call call(host, {unit}, "MOVE(b)");
  if (!call.isUsable()) GTEST_SKIP() << Call::why();
  Faults wrong;
  for (const ElementaryType& type : elementaryTypes()) {
    const std::string name = "of" + std::string(type.name);
    for (const Symbol::Type kind : {Symbol::Variable, Symbol::All}) {
      for (const std::string& written : {name, toLower(name), vel::stringToUpper(name)}) {
        const vel::SymbolVar* const variable = variableNamed(host, written, "Main", kind);
        wrong.addIf(variable == nullptr || variable->dataType() == nullptr ||
                        vel::stringToUpper(variable->dataType()->typeName()) != type.name,
                    written);
      }
    }
  }
  EXPECT_EQ(wrong.text(), "")
      << "SymbolManager::symbol(name, unit, Symbol::Variable or Symbol::All) "
         "(host/symbol_manager.h) owes a SymbolVar for each variable of the unit, in any letter "
         "case, and its dataType() the declared type. SIZEOF and ADR need both; messages would "
         "name a BYTE a USINT.";
}

void variablesAreNotFoundElsewhere(HostUnderTest& host) {
  const Unit main{"Main", POUType::Program, {{"own", "INT"}, {"both", "INT"}}};
  const Unit other{"Other", POUType::Program, {{"both", "REAL"}}};
  const Call call(host, {main, other}, "MOVE(own)");
  if (!call.isUsable()) GTEST_SKIP() << Call::why();
  Faults found;
  for (const char* const name : {"none", "5", "'own'", "ABS(own)", "INT", "MOVE", "Main"}) {
    found.addIf(variableNamed(host, name, "Main") != nullptr, name + std::string(" in Main"));
  }
  found.addIf(variableNamed(host, "own", "Other") != nullptr, "own of Main in Other");
  found.addIf(variableNamed(host, "own", "") != nullptr, "own of Main among those of all units");
  const vel::SymbolVar* const both = variableNamed(host, "both", "Other");
  found.addIf(both != nullptr && both->dataType() != nullptr &&
                  both->dataType()->dataType() != vel::BasicDataType::Real,
              "both of Main instead of that of Other");
  EXPECT_EQ(found.text(), "")
      << "SymbolManager::symbol(name, unit, Symbol::Variable) (host/symbol_manager.h) owes null "
         "for a text that names no variable of the unit, and never another unit's variable. "
         "Operators would judge the wrong one.";
}

void functionOperatorsHaveTheirInputs(HostUnderTest& host) {
  vel::OpManagerAPI* const registry = host.services().operatorManager();
  ASSERT_NE(registry, nullptr) << "see TheRegistryIsKnown";
  std::vector<std::string> names;
  registry->operatorNames(names);
  Faults wrong;
  for (const std::string& name : names) {
    if (!registry->isFCOperator(name)) continue;
    const vel::SymbolPOU* const unit = unitNamed(host, name);
    int inputs = 0;
    for (int i = 0; unit != nullptr && i < unit->paramsCount(); ++i) {
      const vel::SymbolVar* const parameter = unit->param(i);
      if (parameter == nullptr) continue;
      const bool isInOut =
          unit->type() == POUType::Function && parameter->varKind() == vel::SymbolVar::kInOut;
      if (isInOut || parameter->varKind() == vel::SymbolVar::kInput) ++inputs;
    }
    wrong.addIf(inputs != (name == "EXPT" ? 2 : 1), name + " has " + std::to_string(inputs));
  }
  EXPECT_EQ(wrong.text(), "")
      << "SymbolManager::symbol(operator, \"\", Symbol::Pou) (host/symbol_manager.h) owes a "
         "SymbolPOU of the host's own for each operator of which isFCOperator is true, with one "
         "parameter of SymbolVar::kInput, EXPT with two. The registry declares none for these: "
         "they would refuse every call with 0xC0040.";
}

void unitsOfOperatorsAreKept(HostUnderTest& host) {
  vel::OpManagerAPI* const registry = host.services().operatorManager();
  ASSERT_NE(registry, nullptr) << "see TheRegistryIsKnown";
  Faults missing;
  for (const std::string& name : pluginOperators()) {
    missing.addIf(registry->findOperator(name) == nullptr, name);
  }
  EXPECT_EQ(missing.text(), "")
      << "SymbolManager::addPOU (host/symbol_manager.h) owes true for each unit that the registry "
         "offers while it is built; an operator whose unit is refused is not registered.";
  Faults wrong;
  for (const std::string& name : pluginOperators()) {
    if (registry->isFCOperator(name)) continue;
    const vel::SymbolPOU* const unit = unitNamed(host, toLower(name));
    wrong.addIf(unit == nullptr || unit->type() != POUType::Operator || unit->name() != name, name);
  }
  EXPECT_EQ(wrong.text(), "")
      << "SymbolManager::addPOU (host/symbol_manager.h) takes the unit that the registry offers "
         "for each operator that is no function-call operator, and "
         "SymbolManager::symbol(operator, \"\", Symbol::Pou) owes it from then on, in any letter "
         "case. The program could take the operator's name for something else.";
}

void namesOfUnitsAreTakenOnce(HostUnderTest& host) {
  vel::SymbolManager* const symbols = host.services().symbolManager();
  const auto offer = [&](const char* name) {
    auto unit =
        std::make_unique<vel::SymbolPOU>(&host.services(), name, POUType::Operator, nullptr);
    return symbols->addPOU(unit.get(), -1) ? unit.release() : nullptr;
  };
  ASSERT_EQ(offer("Limit"), nullptr)
      << "SymbolManager::addPOU (host/symbol_manager.h) owes false for a name that is taken, in "
         "any letter case. An add-on could hide an operator.";
  vel::SymbolPOU* const fresh = offer("HOSTTEST_FRESH");
  ASSERT_NE(fresh, nullptr)
      << "SymbolManager::addPOU (host/symbol_manager.h) owes true for a name that is free, also "
         "after the registry was built. No add-on could register its operators.";
  EXPECT_EQ(unitNamed(host, "HostTest_Fresh"), fresh)
      << "SymbolManager::symbol (host/symbol_manager.h) owes the unit that addPOU has taken.";
}

void unitsHaveTheirParameters(HostUnderTest& host) {
  const Unit block{"Block",
                   POUType::FunctionBlock,
                   {{"given", "INT", Section::Input},
                    {"shared", "INT", Section::InOut},
                    {"bits", "WORD", Section::BitParameter}}};
  const Call call(host, {block}, "MOVE(given)");
  if (!call.isUsable()) GTEST_SKIP() << Call::why();
  const vel::SymbolPOU* const unit = unitNamed(host, "block");
  ASSERT_NE(unit, nullptr)
      << "SymbolManager::symbol(unit, \"\", Symbol::Pou) (host/symbol_manager.h) owes a SymbolPOU "
         "for each unit of the program. SIZEOF gives no C without its unit.";
  EXPECT_EQ(unit->type(), POUType::FunctionBlock) << "SymbolPOU::type (host/symbol.h)";
  const auto kindOf = [unit](const std::string& name) {
    const vel::SymbolVar* const parameter = unit->param(name);
    return parameter != nullptr ? parameter->varKind() : -1;
  };
  constexpr const char* kOwed =
      "VarContainer::param(name) (host/symbol.h) owes the parameter of that name in any letter "
      "case, of SymbolVar::kInput, kInOut or kBitParameter. GETBITOFPARAM and SETBITOFPARAM take "
      "nothing but bit parameters, which they look up in upper case.";
  EXPECT_EQ(kindOf("GIVEN"), vel::SymbolVar::kInput) << kOwed;
  EXPECT_EQ(kindOf("SHARED"), vel::SymbolVar::kInOut) << kOwed;
  EXPECT_EQ(kindOf("BITS"), vel::SymbolVar::kBitParameter) << kOwed;
}

void functionBlocksHaveADataType(HostUnderTest& host) {
  const Unit block{"Block", POUType::FunctionBlock, {{"given", "INT", Section::Input}}};
  const Call call(host, {mainUnit(), block}, "SIZEOF(Block)");
  if (!call.isUsable()) GTEST_SKIP() << Call::why();
  const auto* const unit = dynamic_cast<vel::SymbolPOU*>(find(host, "Block", "Main", Symbol::All));
  ASSERT_NE(unit, nullptr)
      << "SymbolManager::symbol(block, unit, Symbol::All) (host/symbol_manager.h) owes the "
         "SymbolPOU of a function block. SIZEOF would call it undefined.";
  EXPECT_NE(unit->fbType(), nullptr)
      << "SymbolPOU::fbType (host/symbol.h) owes the data type of a function block's instances. "
         "SIZEOF of a function block would give the size of an expression that does not exist.";
}

}  // namespace

Duties symbolDuties() {
  return {{"VariablesAreFoundInTheirUnit", variablesAreFoundInTheirUnit},
          {"VariablesAreNotFoundElsewhere", variablesAreNotFoundElsewhere},
          {"FunctionOperatorsHaveTheirInputs", functionOperatorsHaveTheirInputs},
          {"UnitsOfOperatorsAreKept", unitsOfOperatorsAreKept},
          {"NamesOfUnitsAreTakenOnce", namesOfUnitsAreTakenOnce},
          {"UnitsHaveTheirParameters", unitsHaveTheirParameters},
          {"FunctionBlocksHaveADataType", functionBlocksHaveADataType}};
}

}  // namespace hosttest
