// The kit's simplest host passes every test; each host that neglects one duty fails the test of
// that and no other.
#include <gtest/gtest.h>

#include <iostream>
#include <map>

#include "hostkit/literal.h"
#include "tests/hosttest/kit_host.h"

namespace {

using vel::BasicDataType;
using vel::Symbol;
using Messages = std::vector<vel::VELMessage>;
using Units = std::vector<hosttest::Unit>;

// Looks symbols up wrong: `Finds` is given what the kit's host answers.
using Find = Symbol* (*)(const char* name, const char* unit, Symbol::Type kind, Symbol* found);
template <Find Finds>
struct FindsHost : KitHost {
  Symbol* find(const char* name, const char* unit, Symbol::Type kind) override {
    return Finds(name, unit, kind, KitHost::find(name, unit, kind));
  }
};

Symbol* onlyAsWritten(const char* name, const char*, Symbol::Type kind, Symbol* found) {
  return kind != Symbol::DataType || (found != nullptr && found->name() == name) ? found : nullptr;
}
Symbol* notAmongAll(const char*, const char*, Symbol::Type kind, Symbol* found) {
  const bool isType = found != nullptr && found->symbolType() == Symbol::DataType;
  return kind == Symbol::All && isType ? nullptr : found;
}
// BYTE as `type` instead.
Symbol* otherByte(Symbol* found, vel::SymbolDataType& type) {
  return found != nullptr && found->name() == "BYTE" ? &type : found;
}
Symbol* byteOfItsOwn(const char*, const char*, Symbol::Type, Symbol* found) {
  static vel::SymbolDataType type("BYTE", static_cast<BasicDataType>(40));
  return otherByte(found, type);
}
Symbol* byteCalledUsint(const char*, const char*, Symbol::Type, Symbol* found) {
  static vel::SymbolDataType type("USINT", BasicDataType::USInt);
  return otherByte(found, type);
}
Symbol* withoutEdgeStates(const char* name, const char*, Symbol::Type kind, Symbol* found) {
  return kind == Symbol::Variable && std::string_view(name).size() == 32 ? nullptr : found;
}
Symbol* anythingAmongAll(const char*, const char*, Symbol::Type kind, Symbol* found) {
  static vel::SymbolDataType type("ANY", BasicDataType::Derived);
  return found == nullptr && kind == Symbol::All ? &type : found;
}

struct LooksEverywhere : KitHost {
  Symbol* find(const char* name, const char* unit, Symbol::Type kind) override {
    Symbol* const found = KitHost::find(name, unit, kind);
    return found == nullptr && kind == Symbol::Variable ? KitHost::find(name, "Main", kind) : found;
  }
};

struct DeclaresNoInputs : KitHost {
  bool addUnit(vel::SymbolPOU* unit) override {
    return unit->type() == vel::POUType::Operator && KitHost::addUnit(unit);
  }
};

struct ForgetsUnits : KitHost {
  bool addUnit(vel::SymbolPOU* unit) override {
    if (unit->name() != "MOVE") return KitHost::addUnit(unit);
    forgotten_.reset(unit);
    return true;
  }
  std::unique_ptr<vel::SymbolPOU> forgotten_;
};

struct TakesNamesTwice : KitHost {
  bool addUnit(vel::SymbolPOU* unit) override {
    if (!KitHost::addUnit(unit)) again_.emplace_back(unit);
    return true;
  }
  std::vector<std::unique_ptr<vel::SymbolPOU>> again_;
};

struct TakesBitParametersForInputs : KitHost {
  vel::ASTNode* parse(const Units& units, const std::string& statement) override {
    Units changed = units;
    for (hosttest::Variable& variable : changed.front().variables) {
      if (variable.section == hosttest::Section::BitParameter) {
        variable.section = hosttest::Section::Input;
      }
    }
    return KitHost::parse(changed, statement);
  }
};

struct NestsCallsBare : KitHost {
  vel::ASTNode* nested(Span /*span*/, Invocation* call) override { return call; }
};

struct TypesLiteralsLate : KitHost {
  Expression* literal(Span span, const hostkit::LiteralValue& value) override {
    Expression* const made = KitHost::literal(span, value);
    made->setBasicType(BasicDataType::None);
    return made;
  }
};

struct RecordsNoTypes : KitHost {
  void recordTypes(vel::ASTNode& /*invocation*/) override {}
};

struct HasOnePosition : KitHost {
  Span span(std::string_view source, std::size_t /*offset*/) override { return {source}; }
};

struct ForgetsLetterCase : KitHost {
  Span span(std::string_view source, std::size_t offset) override {
    std::string upper(source);
    for (char& c : upper) c = hostkit::toUpper(c);
    return KitHost::span(tree_->keep(upper), offset);
  }
};

struct TypesCallsNot : KitHost {
  DataTypeInfo typeOf(vel::ASTNode& node, const std::string& unit, Messages& messages) override {
    const bool isCall = AstNodeHelper::astText(&node).find('(') != std::string::npos;
    return isCall ? DataTypeInfo() : KitHost::typeOf(node, unit, messages);
  }
};

// Rates conversions wrong: `given` becomes `answered`.
template <int Given, int Answered>
struct Rates : KitHost {
  int rate(BasicDataType target, BasicDataType source, const char* text,
           const std::string& unit) override {
    const int rating = KitHost::rate(target, source, text, unit);
    const bool isInteger =
        AstNodeHelper::isIntegerType(target) && AstNodeHelper::isIntegerType(source);
    return rating == Given && isInteger ? Answered : rating;
  }
};

struct TranslatesWithoutPlaceholders : KitHost {
  const std::string& translate(const std::string& format) override {
    static const std::string kShown = "Adresse ungueltig;";
    return format == "Address '%s' is not valid;" ? kShown : format;
  }
};

struct WritesConstantsSilently : KitHost {
  bool isWritable(vel::ASTNode& call, const std::string& text, const std::string& unit,
                  Messages& /*messages*/) override {
    Messages dropped;
    return KitHost::isWritable(call, text, unit, dropped);
  }
};

struct KeepsStatesNowhere : KitHost {
  vel::HeapRawAddr placeState() override { return {}; }
};

struct WritesBeforeItParses : KitHost {
  bool parseAddress(const std::string& text, vel::HeapAddress& out) override {
    if (KitHost::parseAddress(text, out)) return true;
    out.area = 1;
    return false;
  }
};

struct CountsBitsInBytes : KitHost {
  vel::HeapRawAddr place(const vel::HeapAddress& address) override {
    vel::HeapRawAddr raw = KitHost::place(address);
    if (address.isBitMode()) raw.address /= 8;
    return raw;
  }
};

struct TakesBitsForBool : KitHost {
  BasicDataType addressType(const vel::HeapAddress& address) override {
    return address.isBitMode() ? BasicDataType::Bool : KitHost::addressType(address);
  }
};

struct KeepsNoSuffix : KitHost {
  vel::JapanComponent components(const std::string& text) override {
    return {text.substr(0, 1), text.substr(1), ""};
  }
};

struct KnowsNoSpecifications : KitHost {
  vel::SymbolDataType* resolve(vel::ASTNode& /*typeSpec*/, vel::VarContainer& /*unit*/) override {
    return nullptr;
  }
};

struct GeneratesForAnother : KitHost {
  vel::Generator& generator() override {
    another_.operators = services_.operators;
    another_.settings = services_.settings;
    return generator_;
  }
  hostkit::Services another_{this};
  hostkit::TextGenerator generator_{another_};
};

struct KnowsNoCOfTimes : KitHost {
  std::string typeText(vel::SymbolDataType& type) override {
    return type.dataType() == BasicDataType::LTime ? std::string() : KitHost::typeText(type);
  }
};

// Neglects nothing that a single test asks for.
struct HasNoTreeOfSetBit : KitHost {
  vel::ASTNode* parse(const Units& units, const std::string& statement) override {
    const bool isSetBit = statement.find("SETBITOFPARAM") != std::string::npos;
    return isSetBit ? nullptr : KitHost::parse(units, statement);
  }
};

struct Row {
  const char* host;
  const char* test;       // that fails
  const char* operation;  // what its message names
  hosttest::HostFactory make;
};

template <class Host>
std::unique_ptr<hosttest::HostUnderTest> make() {
  auto host = std::make_unique<Host>();
  return host->start() ? std::move(host) : nullptr;
}

// clang-format off
const std::vector<Row>& rows() {
  static const std::vector<Row> kRows = {
      {"KeepsEveryDuty", "", "", make<KitHost>},
      {"OnlyAsWritten", "ElementaryTypesAreFoundInAnyLetterCase", "SymbolManager::symbol", make<FindsHost<onlyAsWritten>>},
      {"NotAmongAll", "ElementaryTypesAreFoundAmongAllKinds", "SymbolManager::symbol", make<FindsHost<notAmongAll>>},
      {"ByteOfItsOwn", "ElementaryTypesHaveTheirNumbers", "SymbolDataType::dataType", make<FindsHost<byteOfItsOwn>>},
      {"ByteCalledUsint", "ElementaryTypesBearTheirNames", "SymbolDataType::typeName", make<FindsHost<byteCalledUsint>>},
      {"LooksEverywhere", "VariablesAreNotFoundElsewhere", "SymbolManager::symbol", make<LooksEverywhere>},
      {"DeclaresNoInputs", "FunctionOperatorsHaveTheirInputs", "SymbolManager::symbol", make<DeclaresNoInputs>},
      {"ForgetsUnits", "UnitsOfOperatorsAreKept", "SymbolManager::addPOU", make<ForgetsUnits>},
      {"TakesNamesTwice", "NamesOfUnitsAreTakenOnce", "SymbolManager::addPOU", make<TakesNamesTwice>},
      {"TakesBitParametersForInputs", "UnitsHaveTheirParameters", "VarContainer::param", make<TakesBitParametersForInputs>},
      {"NestsCallsBare", "CallsWithinHaveNoNeighbours", "ASTNode::parent", make<NestsCallsBare>},
      {"HasOnePosition", "PositionsAreThoseOfTheNodes", "ASTNode::pos", make<HasOnePosition>},
      {"ForgetsLetterCase", "TextsAreAsWritten", "AstNodeHelper::astText", make<ForgetsLetterCase>},
      {"KnowsNoSpecifications", "TypeSpecificationsLeadToTheirTypes", "astSpec2SymbolDataType", make<KnowsNoSpecifications>},
      {"TypesCallsNot", "LiteralsAndCallsHaveTheirTypes", "AstNodeHelper::dataType", make<TypesCallsNot>},
      {"TypesLiteralsLate", "LiteralsCarryTheirTypeBeforeCheck", "Expression::basicType", make<TypesLiteralsLate>},
      {"RecordsNoTypes", "TypesAreRecordedBeforeGenerate", "Expression::setBasicType", make<RecordsNoTypes>},
      {"WritesConstantsSilently", "ConstantsAreNotWritten", "AstNodeHelper::checkAstWritable", make<WritesConstantsSilently>},
      {"WithoutEdgeStates", "EdgeStatesAreFoundByTheirDigest", "SymbolManager::symbol", make<FindsHost<withoutEdgeStates>>},
      {"KeepsStatesNowhere", "EdgeStatesHaveAPlace", "SymbolMemUnit::backendAddress", make<KeepsStatesNowhere>},
      {"SignsFit", "ChangesOfSignConvert", "AstNodeHelper::compareDataType", make<Rates<-1, 0>>},
      {"LargeConstantsMismatch", "ConstantsAreRatedByTheirValue", "AstNodeHelper::compareDataType", make<Rates<-3, -2>>},
      {"TranslatesWithoutPlaceholders", "TranslationsKeepPlaceholders", "InternalInterface::translate", make<TranslatesWithoutPlaceholders>},
      {"WritesBeforeItParses", "FailedParsesLeaveTheAddress", "DeviceMemory::string2IecAddress", make<WritesBeforeItParses>},
      {"CountsBitsInBytes", "PlacesFollowEachOther", "DeviceMemory::HeapAddress2HeapRawAddr", make<CountsBitsInBytes>},
      {"TakesBitsForBool", "AddressesHaveTheirTypes", "DeviceMemory::iecAddressType", make<TakesBitsForBool>},
      {"KeepsNoSuffix", "NamesOfDevicesHaveTheirParts", "DeviceMemory::parseComponent", make<KeepsNoSuffix>},
      {"GeneratesForAnother", "GeneratorHoldsTheServices", "Generator::ii", make<GeneratesForAnother>},
      {"KnowsNoCOfTimes", "EverythingHasACText", "GenClanAPI::typeText", make<KnowsNoCOfTimes>},
      {"HasNoTreeOfSetBit", "EveryOperatorGivesC", "SETBITOFPARAM(bits, i, b) has no tree", make<HasNoTreeOfSetBit>},
      {"AnythingAmongAll", "ChecksRefuseWhatIsWrong", "SIZEOF(nothing) is accepted", make<FindsHost<anythingAmongAll>>},
  };
  return kRows;
}
// clang-format on

// Keeps which tests of which host have failed or skipped themselves, and what they said.
class Failures final : public testing::EmptyTestEventListener {
 public:
  std::map<std::string, std::map<std::string, std::string>> ofHosts;

 private:
  void OnTestEnd(const testing::TestInfo& test) override {
    const testing::TestResult& result = *test.result();
    const bool skipped =
        result.Skipped() && test.test_suite_name() == std::string("KeepsEveryDuty");
    for (int i = 0; i < result.total_part_count() && (result.Failed() || skipped); ++i) {
      ofHosts[test.test_suite_name()][test.name()] += result.GetTestPartResult(i).message();
    }
  }
};

// What is wrong with the failures of a host; empty when they are the one expected.
std::string judge(const Row& row, const std::map<std::string, std::string>& failures) {
  std::string wrong;
  for (const auto& [test, message] : failures) {
    if (test != row.test) wrong += "\n  fails " + test + ": " + message;
  }
  if (*row.test == '\0') return wrong;
  const auto expected = failures.find(row.test);
  if (expected == failures.end()) return wrong + "\n  passes " + row.test;
  if (expected->second.find(row.operation) != std::string::npos) return wrong;
  return wrong + "\n  is not told of " + row.operation + ": " + expected->second;
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  for (const Row& row : rows()) hosttest::registerTests(row.host, row.make);
  testing::TestEventListeners& listeners = testing::UnitTest::GetInstance()->listeners();
  delete listeners.Release(listeners.default_result_printer());
  auto* const failures = new Failures;
  listeners.Append(failures);
  int wrong = RUN_ALL_TESTS() != 0 ? 0 : 1;  // most hosts are to fail
  for (const Row& row : rows()) {
    const std::string text = judge(row, failures->ofHosts[row.host]);
    if (text.empty()) continue;
    std::cout << row.host << text << '\n';
    ++wrong;
  }
  std::cout << rows().size() << " hosts, " << wrong << " judged wrong\n";
  return wrong == 0 ? 0 : 1;
}
