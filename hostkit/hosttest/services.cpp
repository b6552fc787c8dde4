// The services object and the generator: slots, their results, and C texts.
#include "core/op_manager_api.h"
#include "host/project_settings.h"
#include "hostkit/hosttest/duties.h"

namespace hosttest {
namespace {

// Calls the virtual operation in slot `slot`, counted from 1, of `object`. The destructor, in slot
// `destructor`, has two entries in the virtual table.
template <class Result, class... Arguments>
#if defined(__clang__)
__attribute__((no_sanitize("undefined")))
#endif
Result
callSlot(void* object, int destructor, int slot, Arguments... arguments) {
  void** const table = *static_cast<void***>(object);
  void* const entry = table[slot > destructor ? slot : slot - 1];
  return reinterpret_cast<Result (*)(void*, Arguments...)>(entry)(object, arguments...);
}

void servicesStandInTheirSlots(HostUnderTest& host) {
  vel::InternalInterface* const ii = &host.services();
  constexpr int kDestructor = 37;
  const std::string format = "'%s';";
  Faults wrong;
  const auto compare = [&](int slot, const void* direct) {
    wrong.addIf(callSlot<void*>(ii, kDestructor, slot) != direct, "slot " + std::to_string(slot));
  };
  compare(1, ii->symbolManager());
  wrong.addIf(callSlot<const std::string&, const std::string&>(ii, kDestructor, 9, format) !=
                  ii->translate(format),
              "slot 9");
  compare(10, ii->deviceMemory());
  compare(15, ii->callTree());
  compare(24, ii->operatorManager());
  wrong.addIf(callSlot<int>(ii, kDestructor, 31) != ii->addressNotation(), "slot 31");
  compare(36, ii->projectSettings());
  EXPECT_EQ(wrong.text(), "")
      << "InternalInterface (host/internal_interface.h) owes each operation in its slot. The "
         "plugin would call another one.";
}

void generatorStandsInItsSlots(HostUnderTest& host) {
  auto* const type =
      dynamic_cast<vel::SymbolDataType*>(find(host, "INT", "", vel::Symbol::DataType));
  const Call call(host, "MOVE(i)");
  auto* const variable =
      dynamic_cast<vel::SymbolVar*>(find(host, "i", "Main", vel::Symbol::Variable));
  if (!call.isUsable() || type == nullptr || variable == nullptr) GTEST_SKIP() << Call::why();
  vel::Generator* const gen = &host.generator();
  const std::string unit = "Main";
  const std::string text = "5";
  Faults wrong;
  wrong.addIf(std::string(callSlot<const char*, const char*>(gen, 1, 7, "localio.addr")) !=
                  gen->optionText("localio.addr"),
              "slot 7");
  wrong.addIf(callSlot<std::string>(gen, 1, 21, type) != gen->typeText(type), "slot 21");
  wrong.addIf(callSlot<std::string, vel::SymbolVar*, int, const std::string&>(
                  gen, 1, 22, variable, 16, unit) != gen->variableText(variable, 16, unit),
              "slot 22");
  wrong.addIf(callSlot<std::string>(gen, 1, 26, call.parameter(0)) !=
                  gen->expressionText(call.parameter(0)),
              "slot 26");
  wrong.addIf(callSlot<std::string, const std::string&, vel::BasicDataType>(
                  gen, 1, 27, text, vel::BasicDataType::Int) !=
                  gen->prepareConstant(text, vel::BasicDataType::Int),
              "slot 27");
  wrong.addIf(callSlot<std::string>(static_cast<vel::Symbol*>(type), 1, 4) != type->typeName(),
              "slot 4 of SymbolDataType (host/symbol.h)");
  EXPECT_EQ(wrong.text(), "")
      << "GenClanAPI (host/generator.h) owes each operation in its slot. The plugin would call "
         "another one.";
}

void generatorHoldsTheServices(HostUnderTest& host) {
  vel::Generator* const gen = &host.generator();
  EXPECT_EQ(gen->ii, &host.services())
      << "Generator::ii (host/generator.h) is the very object that CreateOpManager was given. "
         "Operators would generate from the symbols of another host.";
  EXPECT_EQ(reinterpret_cast<void**>(gen)[1], static_cast<void*>(gen->ii))
      << "Generator::ii (host/generator.h) is the generator's first data member.";
  EXPECT_NE(dynamic_cast<vel::GenClanAPI*>(gen), nullptr)
      << "A Generator casts to GenClanAPI at run time (host/generator.h). No operator would give "
         "C.";
}

void theRegistryIsKnown(HostUnderTest& host) {
  vel::OpManagerAPI* const registry = host.services().operatorManager();
  ASSERT_NE(registry, nullptr)
      << "InternalInterface::operatorManager (host/internal_interface.h) owes the registry that "
         "CreateOpManager has returned. TO_STRING would record no call, or crash.";
  EXPECT_NE(registry->findOperator("limit"), nullptr)
      << "InternalInterface::operatorManager (host/internal_interface.h) owes the plugin's own "
         "registry, which finds LIMIT in any letter case.";
}

void settingsAgreeWithOptions(HostUnderTest& host) {
  for (const char* const ranges : {"I:0-16;Q:8-24;", ""}) {
    const bool set = host.setLocalIo(ranges);
    const vel::ProjectSettings* const settings = host.services().projectSettings();
    const char* const option = host.generator().optionText("localio.addr");
    ASSERT_NE(option, nullptr)
        << "GenClanAPI::optionText (host/generator.h) owes an empty text where an option is unset.";
    EXPECT_EQ(settings != nullptr ? settings->localIoAddress : "", option)
        << "ProjectSettings::localIoAddress (host/project_settings.h), which check reads, and "
           "GenClanAPI::optionText(\"localio.addr\") (host/generator.h), which generate reads, are "
           "one text. Addresses would be warned of by one range and refreshed by another.";
    if (set) {
      EXPECT_STREQ(option, ranges) << "HostUnderTest::setLocalIo has returned true.";
    }
  }
  EXPECT_STREQ(host.generator().optionText("no.such.option"), "")
      << "GenClanAPI::optionText (host/generator.h) owes an empty text for an unknown option.";
}

void everythingHasACText(HostUnderTest& host) {
  Call call(host, "y := MUX(1, i, TRUNC(r), w.3, DINT#7)");
  if (!call.isUsable()) GTEST_SKIP() << Call::why();
  if (call.check()) call.accept();
  vel::Generator& gen = host.generator();
  Faults missing;
  for (const ElementaryType& type : elementaryTypes()) {
    auto* const symbol =
        dynamic_cast<vel::SymbolDataType*>(find(host, type.name, "", vel::Symbol::DataType));
    missing.addIf(symbol != nullptr && gen.typeText(symbol).empty(), type.name);
  }
  EXPECT_EQ(missing.text(), "")
      << "GenClanAPI::typeText (host/generator.h) owes the C spelling of each elementary type. "
         "Conversions would cast to nothing.";
  auto* const variable =
      dynamic_cast<vel::SymbolVar*>(find(host, "i", "Main", vel::Symbol::Variable));
  EXPECT_TRUE(variable == nullptr || !gen.variableText(variable, 16, "Main").empty())
      << "GenClanAPI::variableText (host/generator.h) owes, for flag 16, a C lvalue whose address "
         "can be taken. ADR would take the address of nothing.";
  for (int i = 0; i < call.parameters(); ++i) {
    EXPECT_NE(gen.expressionText(call.parameter(i)), "")
        << "GenClanAPI::expressionText (host/generator.h) owes the C text of every expression; '"
        << AstNodeHelper::astText(call.parameter(i)) << "' has none. Calls would have holes.";
  }
}

}  // namespace

Duties serviceDuties() {
  return {{"ServicesStandInTheirSlots", servicesStandInTheirSlots},
          {"GeneratorStandsInItsSlots", generatorStandsInItsSlots},
          {"GeneratorHoldsTheServices", generatorHoldsTheServices},
          {"TheRegistryIsKnown", theRegistryIsKnown},
          {"SettingsAgreeWithOptions", settingsAgreeWithOptions},
          {"EverythingHasACText", everythingHasACText}};
}

}  // namespace hosttest
