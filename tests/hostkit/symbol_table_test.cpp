#include "hostkit/symbol_table.h"

#include <gtest/gtest.h>

#include "hostkit/kit_host.h"
#include "hostkit/unit.h"

namespace {

using vel::Symbol;

TEST(SymbolTable, FindsWhatIsAskedFor) {
  KitHost host;
  vel::SymbolManager& table = *host.symbolManager();
  const auto variable = [](const char* name) {
    return std::make_unique<vel::SymbolVar>(name, nullptr, 0);
  };
  Symbol* const global = host.symbols.addVariable("", variable("level"));
  Symbol* const local = host.symbols.addVariable("Main", variable("Level"));
  EXPECT_EQ(host.symbols.addVariable("MAIN", variable("LEVEL")), nullptr);
  Symbol* const named = host.symbols.addVariable("", variable("INT"));
  auto unit = std::make_unique<hostkit::Unit>(&host, "Pump", vel::POUType::FunctionBlock);
  ASSERT_TRUE(table.addPOU(unit.get(), -1));
  const Symbol* const pump = unit.release();
  for (const char* taken : {"PUMP", "tod", "Date_and_Time"}) {
    hostkit::Unit refused(&host, taken, vel::POUType::Program);
    EXPECT_FALSE(table.addPOU(&refused, -1)) << taken;
  }

  EXPECT_EQ(table.symbol("LEVEL", "main", Symbol::Variable), local);
  EXPECT_EQ(table.symbol("level", "Other", Symbol::Variable), global);
  EXPECT_EQ(table.symbol("level", "Main", Symbol::DataType), nullptr);
  EXPECT_EQ(table.symbol("pump", "", Symbol::Pou), pump);
  EXPECT_EQ(table.symbol("pump", "Main", Symbol::All), pump);
  EXPECT_EQ(table.symbol("pump", "", Symbol::Variable), nullptr);
  EXPECT_EQ(table.symbol("int", "Main", Symbol::All), named);
  const auto* const word =
      dynamic_cast<const vel::SymbolDataType*>(table.symbol("wOrD", "", Symbol::DataType));
  ASSERT_NE(word, nullptr);
  EXPECT_EQ(word->typeName(), "WORD");
  EXPECT_EQ(table.symbol("time_of_day", "", Symbol::DataType),
            AstNodeHelper::dataType(&host, vel::BasicDataType::TimeOfDay));
  EXPECT_EQ(AstNodeHelper::dataType(&host, vel::BasicDataType::BitAddress), nullptr);
}

}  // namespace
