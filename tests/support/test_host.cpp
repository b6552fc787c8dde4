#include "support/test_host.h"

#include <gtest/gtest.h>

#include <tuple>
#include <utility>

#include "hostkit/elementary_types.h"
#include "hostkit/literal.h"
#include "hostkit/unit.h"
#include "support/test_tree.h"

using vel::BasicDataType;
using vel::Symbol;

namespace {

// What the variables of tests that begin with a word are.
const std::pair<const char*, const char*> kVariables[] = {
    {"si", "SINT"},  {"i", "INT"},     {"di", "DINT"},  {"li", "LINT"}, {"us", "USINT"},
    {"ui", "UINT"},  {"ud", "UDINT"},  {"ul", "ULINT"}, {"by", "BYTE"}, {"w", "WORD"},
    {"dw", "DWORD"}, {"lw", "LWORD"},  {"b", "BOOL"},   {"r", "REAL"},  {"lr", "LREAL"},
    {"t", "TIME"},   {"lt", "LTIME"},  {"d", "DATE"},   {"td", "TOD"},  {"dt", "DT"},
    {"s", "STRING"}, {"ws", "WSTRING"}};

struct PlacedVar : vel::SymbolVar {
  PlacedVar(const std::string& name, std::uint32_t raw, const vel::HeapAddress& address)
      : SymbolVar(name, nullptr, 0) {
    backendAddress_.address = raw;
    iecAddress_ = address;
    fixedAddress_ = address.area != 0;
  }
};

}  // namespace

DataTypeInfo TestHost::typeOf(const std::string& text) {
  hostkit::LiteralValue literal;
  if (text != "true" && hostkit::parseLiteral(text, literal) == hostkit::LiteralError::None) {
    return {literal.type, literal.typeName};
  }
  const std::string word = text.substr(0, text.find_first_of("0123456789 .('"));
  if (word == "q") return {BasicDataType::Undetermined, ""};
  if (word == "p") return {BasicDataType::Pointer, ""};
  if (word == "st") return {BasicDataType::Structure, ""};
  if (word == "en") return {BasicDataType::Enumeration, ""};
  if (word == "fb") return {BasicDataType::FunctionBlock, ""};
  if (word == "n") return {BasicDataType::Derived, "DINT"};
  for (const auto& [variable, type] : kVariables) {
    if (word == variable) return {hostkit::elementaryType(type)->type, type};
  }
  return {};
}

void TestHost::declare(const std::string& name, vel::POUType type, const std::vector<int>& kinds) {
  auto unit = std::make_unique<hostkit::Unit>(this, name, type);
  for (const int kind : kinds) {
    unit->addParameter(kind < 0 ? nullptr : std::make_unique<vel::SymbolVar>("in", nullptr, kind));
  }
  units.insert(units.begin(), std::move(unit));
}

void TestHost::place(const std::string& unitAndName, std::uint32_t raw,
                     const vel::HeapAddress& address) {
  const std::string name = unitAndName.substr(unitAndName.find(':') + 1);
  named[unitAndName] = std::make_unique<PlacedVar>(name, raw, address);
}

std::string TestHost::take(std::vector<std::string>& list) {
  std::string all;
  for (const std::string& each : std::exchange(list, {})) all += (all.empty() ? "" : "\n") + each;
  return all;
}

void TestHost::record(const std::string& call) {
  calls.push_back(call);
  asked.push_back(call);
}

std::string TestHost::describe(const Messages& messages) {
  std::string all;
  for (const vel::VELMessage& each : messages) {
    EXPECT_EQ(each.reserved, -1);
    EXPECT_EQ(each.extra1 + each.extra2, "");
    EXPECT_TRUE(each.severity == 1 || each.severity == 2) << each.severity;
    all += all.empty() ? "@" : "\n@";
    all += std::to_string(each.location.offset()) + (each.severity == 1 ? " E " : " W ");
    all += AstNodeHelper::stringFormat(each.code, "%X ", each.code) + each.text;
  }
  return all;
}

Symbol* TestHost::find(const char* name, const char* unit, Symbol::Type kind) {
  // One question, although the symbol table is asked for first.
  if (!asked.empty() && asked.back() == "symbols") asked.pop_back();
  asked.push_back(std::string("find ") + name + " " + std::to_string(kind) + " in " + unit);
  const auto found = named.find(std::string(unit) + ":" + name);
  if (found != named.end() && (found->second->symbolType() & kind) != 0) return found->second.get();

  if ((kind & Symbol::DataType) != 0) {
    if (Symbol* const type = types_.find(name, "", Symbol::DataType)) return type;
  }
  const DataTypeInfo info = typeOf(name);
  if ((kind & Symbol::Variable) != 0 && info.type != BasicDataType::None) {
    auto* const type =
        static_cast<vel::SymbolDataType*>(types_.find(info.name.c_str(), "", Symbol::DataType));
    return variables_.emplace_back(std::make_unique<vel::SymbolVar>(name, type, 0)).get();
  }
  for (const auto& each : units) {
    if ((kind & Symbol::Pou) != 0 && hostkit::equalIgnoringCase(each->name(), name)) {
      return each.get();
    }
  }
  return nullptr;
}

bool TestHost::addUnit(vel::SymbolPOU* unit) {
  EXPECT_TRUE(unit->services() != nullptr && unit->returnVariable() == nullptr);
  if (refusedUnits.count(unit->name()) != 0) return false;
  units.emplace_back(unit);
  return true;
}

TestAddress TestHost::known(const vel::HeapAddress& address) const {
  const auto key = [](const vel::HeapAddress& a) {
    return std::tuple(a.area, a.unitSize, a.position, a.bitIndex, a.extra);
  };
  for (const auto& [text, each] : addresses) {
    if (key(each.address) == key(address)) return each;
  }
  return {{}, kNoPlace, BasicDataType::None, {}};
}
