// Elementary types: their symbols, numbers, names, classes and sizes.
#include "host/text.h"
#include "hostkit/hosttest/duties.h"

namespace hosttest {
namespace {

using vel::BasicDataType;
using vel::Symbol;

// In upper case, lower case, and mixed case.
std::vector<std::string> spellings(const std::string& name) {
  return {name, toLower(name), name.substr(0, 1) + toLower(name.substr(1))};
}

vel::SymbolDataType* typeNamed(HostUnderTest& host, const std::string& name,
                               Symbol::Type kind = Symbol::DataType) {
  return dynamic_cast<vel::SymbolDataType*>(find(host, name, "", kind));
}

void foundInAnyLetterCase(HostUnderTest& host) {
  Faults missing;
  for (const ElementaryType& type : elementaryTypes()) {
    for (const std::string& written : spellings(type.name)) {
      missing.addIf(typeNamed(host, written) == nullptr, written);
    }
  }
  EXPECT_EQ(missing.text(), "")
      << "SymbolManager::symbol(name, \"\", Symbol::DataType) (host/symbol_manager.h) owes a "
         "SymbolDataType for each elementary type, in any letter case. Conversions from a type "
         "that is missing would be refused as unknown, and those to it give no C.";
}

void foundAmongAllKinds(HostUnderTest& host) {
  Faults missing;
  for (const ElementaryType& type : elementaryTypes()) {
    for (const std::string& written : spellings(type.name)) {
      missing.addIf(typeNamed(host, written, Symbol::All) == nullptr, written);
    }
  }
  EXPECT_EQ(missing.text(), "")
      << "SymbolManager::symbol(name, \"\", Symbol::All) (host/symbol_manager.h) owes the "
         "elementary types too. ROL and ROR look \"int\", \"uint\" and so on up like this and "
         "would give no C.";
}

void haveTheirNumbers(HostUnderTest& host) {
  Faults wrong;
  for (const ElementaryType& type : elementaryTypes()) {
    const vel::SymbolDataType* const symbol = typeNamed(host, type.name);
    if (symbol == nullptr || symbol->dataType() == type.number) continue;
    wrong.addIf(true, std::string(type.name) + " has " +
                          std::to_string(number(symbol->dataType())) + " instead of " +
                          std::to_string(number(type.number)));
  }
  EXPECT_EQ(wrong.text(), "")
      << "SymbolDataType::dataType (host/symbol.h) owes the number of host/basic_data_type.h; a "
         "bit string carries that of its unsigned partner. Operators would take the type for "
         "another one.";
}

void bearTheirNames(HostUnderTest& host) {
  Faults wrong;
  for (const ElementaryType& type : elementaryTypes()) {
    const vel::SymbolDataType* const symbol = typeNamed(host, type.name);
    if (symbol == nullptr || vel::stringToUpper(symbol->typeName()) == type.name) continue;
    wrong.addIf(true, std::string(type.name) + " says \"" + symbol->typeName() + "\"");
  }
  EXPECT_EQ(wrong.text(), "")
      << "SymbolDataType::typeName (host/symbol.h) owes the name of the type. A bit string is told "
         "from the integer of its number by it alone: messages would name the wrong one.";
}

void numbersHaveTheirNames(HostUnderTest& /*host*/) {
  Faults wrong;
  for (const ElementaryType& type : elementaryTypes()) {
    const std::string text = AstNodeHelper::basicDataTypeText(type.number);
    wrong.addIf(text != type.numberName, std::to_string(number(type.number)) + " gives \"" + text +
                                             "\" instead of \"" + type.numberName + "\"");
  }
  EXPECT_EQ(wrong.text(), "")
      << "AstNodeHelper::basicDataTypeText (host/ast_node_helper.h) owes the IEC name in upper "
         "case, that of the integer for a number that a bit string shares. It is what operators "
         "write as the result type of a call, and in messages.";
}

void numbersLeadToTheirTypes(HostUnderTest& host) {
  Faults wrong;
  for (const ElementaryType& type : elementaryTypes()) {
    const vel::SymbolDataType* const symbol =
        AstNodeHelper::dataType(&host.services(), type.number);
    wrong.addIf(symbol == nullptr || symbol->dataType() != type.number,
                std::to_string(number(type.number)));
  }
  EXPECT_EQ(wrong.text(), "")
      << "AstNodeHelper::dataType(ii, number) (host/ast_node_helper.h) owes the symbol of an "
         "elementary type, of that number. SIZEOF of a device address asks it for the type.";
}

void haveTheirClasses(HostUnderTest& /*host*/) {
  Faults wrong;
  for (int i = -1; i <= number(BasicDataType::BitAddress); ++i) {
    const auto type = static_cast<BasicDataType>(i);
    const bool isSigned = type >= BasicDataType::SInt && type <= BasicDataType::LInt;
    const bool isUnsigned = type >= BasicDataType::USInt && type <= BasicDataType::ULInt;
    const bool isFloat = type == BasicDataType::Real || type == BasicDataType::LReal;
    const auto row = [i](const char* operation) {
      return operation + (" of " + std::to_string(i));
    };
    wrong.addIf(AstNodeHelper::isIntegerType(type) != (isSigned || isUnsigned),
                row("isIntegerType"));
    wrong.addIf(AstNodeHelper::isUIntegerType(type) != isUnsigned, row("isUIntegerType"));
    wrong.addIf(AstNodeHelper::isFloatType(type) != isFloat, row("isFloatType"));
  }
  EXPECT_EQ(wrong.text(), "")
      << "AstNodeHelper::isIntegerType, isUIntegerType and isFloatType (host/ast_node_helper.h) "
         "owe the class of a number: 1 to 8 are integers, 5 to 8 unsigned, 10 and 11 floats. "
         "Most operators choose by them what they accept and what type they have.";
}

void haveSizes(HostUnderTest& host) {
  const auto sizeOf = [&host](const ElementaryType& type) {
    return AstNodeHelper::getBasicDataTypeSize(&host.services(), type.number);
  };
  Faults wrong;
  for (const ElementaryType& a : elementaryTypes()) {
    for (const ElementaryType& b : elementaryTypes()) {
      const bool areSized = a.size != 0 && b.size != 0;
      wrong.addIf(areSized && (sizeOf(a) < sizeOf(b)) != (a.size < b.size),
                  std::string(a.name) + " of " + std::to_string(sizeOf(a)) + " and " + b.name +
                      " of " + std::to_string(sizeOf(b)));
    }
  }
  EXPECT_EQ(wrong.text(), "")
      << "AstNodeHelper::getBasicDataTypeSize (host/ast_node_helper.h) owes the size of integers "
         "and floats. MIN and MAX would take the smaller of two types as theirs.";
}

void haveCTypes(HostUnderTest& /*host*/) {
  Faults missing;
  for (const ElementaryType& type : elementaryTypes()) {
    missing.addIf(AstNodeHelper::basicDataToCTypeText(type.number).empty(), type.name);
  }
  EXPECT_EQ(missing.text(), "")
      << "AstNodeHelper::basicDataToCTypeText (host/ast_node_helper.h) owes the C type of each "
         "elementary type. SHL, SHR and MUX would cast to nothing.";
}

void integersHaveTheirStandIns(HostUnderTest& /*host*/) {
  Faults wrong;
  for (const ElementaryType& type : elementaryTypes()) {
    if (type.number > BasicDataType::ULInt) continue;
    const int standIn = number(AstNodeHelper::tranIntegerBasicType(type.number));
    wrong.addIf(standIn < number(BasicDataType::SInt) || standIn > number(BasicDataType::ULInt),
                std::string(type.name) + " gives " + std::to_string(standIn));
  }
  EXPECT_EQ(wrong.text(), "")
      << "AstNodeHelper::tranIntegerBasicType (host/ast_node_helper.h) owes an integer type for an "
         "integer type. MIN and MAX of a signed and an unsigned one would have no type.";
}

}  // namespace

Duties typeDuties() {
  return {{"ElementaryTypesAreFoundInAnyLetterCase", foundInAnyLetterCase},
          {"ElementaryTypesAreFoundAmongAllKinds", foundAmongAllKinds},
          {"ElementaryTypesHaveTheirNumbers", haveTheirNumbers},
          {"ElementaryTypesBearTheirNames", bearTheirNames},
          {"NumbersOfTypesHaveTheirNames", numbersHaveTheirNames},
          {"NumbersOfTypesLeadToTheirSymbols", numbersLeadToTheirTypes},
          {"TypesHaveTheirClasses", haveTheirClasses},
          {"TypesHaveTheirSizes", haveSizes},
          {"TypesHaveCTypes", haveCTypes},
          {"IntegersHaveTheirStandIns", integersHaveTheirStandIns}};
}

}  // namespace hosttest
