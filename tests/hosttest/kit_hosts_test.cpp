// The example host passes every test; each host that neglects one duty fails the test of that and
// no other.
#include <gtest/gtest.h>

#include <map>

#include "tests/hosttest/example_host.h"

namespace {

using vel::Symbol;
using Messages = std::vector<vel::VELMessage>;
using Units = std::vector<hosttest::Unit>;

struct KnowsTypesInCapitals : ExampleHost {
  Symbol* find(const char* name, const char* unit, Symbol::Type kind) override {
    Symbol* const found = ExampleHost::find(name, unit, kind);
    const bool isOther = kind == Symbol::DataType && found != nullptr && found->name() != name;
    return isOther ? nullptr : found;
  }
};

struct LooksEverywhere : ExampleHost {
  Symbol* find(const char* name, const char* unit, Symbol::Type kind) override {
    Symbol* const found = ExampleHost::find(name, unit, kind);
    const bool isMissing = found == nullptr && kind == Symbol::Variable;
    return isMissing ? ExampleHost::find(name, "Main", kind) : found;
  }
};

struct ForgetsEdgeStates : ExampleHost {
  Symbol* find(const char* name, const char* unit, Symbol::Type kind) override {
    constexpr std::size_t kDigest = 32;
    const bool isState = kind == Symbol::Variable && std::string_view(name).size() == kDigest;
    return isState ? nullptr : ExampleHost::find(name, unit, kind);
  }
};

struct TakesAnythingForAType : ExampleHost {
  Symbol* find(const char* name, const char* unit, Symbol::Type kind) override {
    Symbol* const found = ExampleHost::find(name, unit, kind);
    return found == nullptr && kind == Symbol::All ? &any_ : found;
  }
  vel::SymbolDataType any_{"ANY", vel::BasicDataType::Derived};
};

struct DeclaresNoInputs : ExampleHost {
  bool addUnit(vel::SymbolPOU* unit) override {
    return unit->type() == vel::POUType::Operator && ExampleHost::addUnit(unit);
  }
};

struct TakesBitParametersForInputs : ExampleHost {
  vel::ASTNode* parse(const Units& units, const std::string& statement) override {
    Units changed = units;
    for (hosttest::Variable& variable : changed.front().variables) {
      const bool isBits = variable.section == hosttest::Section::BitParameter;
      if (isBits) variable.section = hosttest::Section::Input;
    }
    return ExampleHost::parse(changed, statement);
  }
};

struct HasNoTreeOfSetBit : ExampleHost {
  vel::ASTNode* parse(const Units& units, const std::string& statement) override {
    const bool isSetBit = statement.find("SETBITOFPARAM") != std::string::npos;
    return isSetBit ? nullptr : ExampleHost::parse(units, statement);
  }
};

// Spoils each operand of a call.
struct SpoilsOperands : ExampleHost {
  vel::ASTNode* parse(const Units& units, const std::string& statement) override {
    vel::ASTNode* const call = ExampleHost::parse(units, statement);
    vel::ASTNode* const list = call->leaf(1);
    for (int i = 0; i < list->leavesCount(); ++i) {
      spoil(*list, i, static_cast<Expression&>(*list->leaf(i)));
    }
    return call;
  }
  virtual void spoil(vel::ASTNode& list, int position, Expression& operand) = 0;
};

struct NestsCallsBare : SpoilsOperands {
  void spoil(vel::ASTNode& list, int position, Expression& operand) override {
    if (operand.op() == kCall) vel::TreeBuilder::setLeaf(list, position, operand.leaf(0));
  }
  std::string expressionText(vel::ASTNode& node) override { return AstNodeHelper::astText(&node); }
};

struct HasOnePosition : SpoilsOperands {
  void spoil(vel::ASTNode& list, int /*position*/, Expression& operand) override {
    vel::TreeBuilder::setSpan(operand, list.pos(), vel::TreeBuilder::source(operand));
  }
};

struct TypesLiteralsLate : SpoilsOperands {
  void spoil(vel::ASTNode& /*list*/, int /*position*/, Expression& operand) override {
    if (operand.op() == Expression::Constant) operand.setBasicType(vel::BasicDataType::None);
  }
};

struct WritesConstantsSilently : ExampleHost {
  bool isWritable(vel::ASTNode& call, const std::string& text, const std::string& unit,
                  Messages& /*messages*/) override {
    Messages dropped;
    return ExampleHost::isWritable(call, text, unit, dropped);
  }
};

struct RatesChangesOfSignAsFitting : ExampleHost {
  int rate(vel::BasicDataType target, vel::BasicDataType source, const char* text,
           const std::string& unit) override {
    const int rating = ExampleHost::rate(target, source, text, unit);
    return rating == -1 && AstNodeHelper::isIntegerType(target) ? 0 : rating;
  }
};

struct TranslatesWithoutPlaceholders : ExampleHost {
  const std::string& translate(const std::string& format) override {
    return format == "Address '%s' is not valid;" ? shown_ : format;
  }
  const std::string shown_ = "Adresse ungueltig;";
};

struct WritesBeforeItParses : ExampleHost {
  bool parseAddress(const std::string& text, vel::HeapAddress& out) override {
    if (ExampleHost::parseAddress(text, out)) return true;
    out.area = 1;
    return false;
  }
};

struct TypesBitsByTheirAddress : ExampleHost {
  DataTypeInfo typeOf(vel::ASTNode& node, const std::string& unit, Messages& told) override {
    const bool isAddress = AstNodeHelper::astText(&node).rfind('%', 0) == 0;
    const DataTypeInfo type = ExampleHost::typeOf(node, unit, told);
    const bool isBit = isAddress && type.type == vel::BasicDataType::Bool;
    return isBit ? DataTypeInfo{vel::BasicDataType::BitAddress, "BOOL"} : type;
  }
};

struct GeneratesForAnother : ExampleHost {
  vel::Generator& generator() override {
    another_.operators = Host::services.operators;
    another_.settings = Host::services.settings;
    return generatorOfAnother_;
  }
  hostkit::Services another_{this};
  hostkit::TextGenerator generatorOfAnother_{another_};
};

struct KnowsNoCOfTimes : ExampleHost {
  std::string typeText(vel::SymbolDataType& type) override {
    return type.dataType() == vel::BasicDataType::LTime ? "" : ExampleHost::typeText(type);
  }
};

struct Row {
  const char* test;       // that the host fails, and no other
  const char* operation;  // named by the message of that
  hosttest::HostFactory make;
};

template <class Host>
std::unique_ptr<hosttest::HostUnderTest> make() {
  auto host = std::make_unique<Host>();
  return host->start() ? std::move(host) : nullptr;
}

// clang-format off
std::vector<Row> rows() {
  return {
      {"ElementaryTypesAreFoundInAnyLetterCase", "SymbolManager::symbol", make<KnowsTypesInCapitals>},
      {"VariablesAreNotFoundElsewhere", "SymbolManager::symbol", make<LooksEverywhere>},
      {"FunctionOperatorsHaveTheirInputs", "SymbolManager::symbol", make<DeclaresNoInputs>},
      {"UnitsHaveTheirParameters", "VarContainer::param", make<TakesBitParametersForInputs>},
      {"CallsWithinHaveNoNeighbours", "ASTNode::parent", make<NestsCallsBare>},
      {"PositionsAreThoseOfTheNodes", "ASTNode::pos", make<HasOnePosition>},
      {"LiteralsCarryTheirTypeBeforeCheck", "Expression::basicType", make<TypesLiteralsLate>},
      {"ConstantsAreNotWritten", "AstNodeHelper::checkAstWritable", make<WritesConstantsSilently>},
      {"EdgeStatesAreFoundByTheirDigest", "SymbolManager::symbol", make<ForgetsEdgeStates>},
      {"ChangesOfSignConvert", "AstNodeHelper::compareDataType", make<RatesChangesOfSignAsFitting>},
      {"TranslationsKeepPlaceholders", "InternalInterface::translate", make<TranslatesWithoutPlaceholders>},
      {"FailedParsesLeaveTheAddress", "DeviceMemory::string2IecAddress", make<WritesBeforeItParses>},
      {"BitsOfMemoryAreBool", "AstNodeHelper::dataType", make<TypesBitsByTheirAddress>},
      {"GeneratorHoldsTheServices", "Generator::ii", make<GeneratesForAnother>},
      {"EverythingHasACText", "GenClanAPI::typeText", make<KnowsNoCOfTimes>},
      {"EveryOperatorGivesC", "SETBITOFPARAM(bits, i, b) has no tree", make<HasNoTreeOfSetBit>},
      {"ChecksRefuseWhatIsWrong", "SIZEOF(nothing) is accepted", make<TakesAnythingForAType>},
  };
}
// clang-format on

constexpr const char* kSound = "KeepsEveryDuty";

// Keeps what the tests of each host said that have failed, or skipped themselves with the sound
// host, where they would prove nothing.
class Failures final : public testing::EmptyTestEventListener {
 public:
  std::map<std::string, std::map<std::string, std::string>> ofSuites;

 private:
  void OnTestEnd(const testing::TestInfo& test) override {
    const testing::TestResult& result = *test.result();
    const std::string suite = test.test_suite_name();
    if (!result.Failed() && !(result.Skipped() && suite == kSound)) return;
    std::string& said = ofSuites[suite][test.name()];
    for (int i = 0; i < result.total_part_count(); ++i)
      said += result.GetTestPartResult(i).message();
  }
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  hosttest::registerTests(kSound, make<ExampleHost>);
  for (const Row& row : rows()) hosttest::registerTests(row.test, row.make);
  testing::TestEventListeners& listeners = testing::UnitTest::GetInstance()->listeners();
  delete listeners.Release(listeners.default_result_printer());
  auto* const failures = new Failures;
  listeners.Append(failures);
  bool right = RUN_ALL_TESTS() != 0;  // most hosts are to fail
  for (const Row& row : rows()) {
    std::string& said = failures->ofSuites[row.test][row.test];
    const bool isNamed = said.find(row.operation) != std::string::npos;
    said.insert(0, "does not name " + std::string(row.operation) + ": ");
    if (isNamed) said.clear();
  }
  for (const auto& [suite, tests] : failures->ofSuites) {
    for (const auto& [test, said] : tests) {
      if (said.empty()) continue;
      std::cout << "The host of " << suite << ", in " << test << ": " << said << '\n';
      right = false;
    }
  }
  return right ? 0 : 1;
}
