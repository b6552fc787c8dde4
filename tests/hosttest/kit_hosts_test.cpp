// The example host passes every test; each host that neglects one duty fails the test of that and
// no other.
#include <gtest/gtest.h>

#include <map>

#include "tests/hosttest/example_host.h"

namespace {

using vel::Symbol;
using Messages = std::vector<vel::VELMessage>;
using Units = std::vector<hosttest::Unit>;

struct Row {
  const char* test;       // that a host fails which neglects the duty, and no other test
  const char* operation;  // named by the message of that
};
// clang-format off
constexpr Row kRows[] = {
    {"ElementaryTypesAreFoundInAnyLetterCase", "SymbolManager::symbol"},
    {"VariablesAreNotFoundElsewhere", "SymbolManager::symbol"},
    {"FunctionOperatorsHaveTheirInputs", "SymbolManager::symbol"},
    {"UnitsHaveTheirParameters", "VarContainer::param"},
    {"CallsWithinHaveNoNeighbours", "ASTNode::parent"},
    {"PositionsAreThoseOfTheNodes", "ASTNode::pos"},
    {"LiteralsCarryTheirTypeBeforeCheck", "Expression::basicType"},
    {"ConstantsAreNotWritten", "AstNodeHelper::checkAstWritable"},
    {"EdgeStatesAreFoundByTheirDigest", "SymbolManager::symbol"},
    {"ChangesOfSignConvert", "AstNodeHelper::compareDataType"},
    {"TranslationsKeepPlaceholders", "InternalInterface::translate"},
    {"FailedParsesLeaveTheAddress", "DeviceMemory::string2IecAddress"},
    {"BitsOfMemoryAreBool", "AstNodeHelper::dataType"},
    {"GeneratorHoldsTheServices", "Generator::ii"},
    {"EverythingHasACText", "GenClanAPI::typeText"},
    {"EveryOperatorGivesC", "SETBITOFPARAM(bits, i, b) has no tree"},
    {"ChecksRefuseWhatIsWrong", "SIZEOF(nothing) is accepted"},
};
// clang-format on

// The example host, but for the duty that a test names.
class Negligent : public ExampleHost {
 public:
  explicit Negligent(std::string_view duty) : duty_(duty) {}

  Symbol* find(const char* name, const char* unit, Symbol::Type kind) override {
    constexpr std::size_t kDigest = 32;
    Symbol* const found = ExampleHost::find(name, unit, kind);
    const bool isVariable = kind == Symbol::Variable;
    const bool isOther = kind == Symbol::DataType && found != nullptr && found->name() != name;
    if (isOther && neglects("ElementaryTypesAreFoundInAnyLetterCase")) return nullptr;
    if (isVariable && std::string_view(name).size() == kDigest &&
        neglects("EdgeStatesAreFoundByTheirDigest")) {
      return nullptr;
    }
    if (found != nullptr) return found;
    if (isVariable && neglects("VariablesAreNotFoundElsewhere")) {
      return ExampleHost::find(name, "Main", kind);
    }
    return kind == Symbol::All && neglects("ChecksRefuseWhatIsWrong") ? &any_ : nullptr;
  }
  bool addUnit(vel::SymbolPOU* unit) override {
    const bool isOperator = unit->type() == vel::POUType::Operator;
    return (isOperator || !neglects("FunctionOperatorsHaveTheirInputs")) &&
           ExampleHost::addUnit(unit);
  }
  vel::ASTNode* parse(const Units& units, const std::string& statement) override {
    const bool isSetBit = statement.find("SETBITOFPARAM") != std::string::npos;
    if (isSetBit && neglects("EveryOperatorGivesC")) return nullptr;
    Units changed = units;
    for (hosttest::Variable& variable : changed.front().variables) {
      const bool isBits = variable.section == hosttest::Section::BitParameter;
      if (isBits && neglects("UnitsHaveTheirParameters")) {
        variable.section = hosttest::Section::Input;
      }
    }
    vel::ASTNode* const call = ExampleHost::parse(changed, statement);
    vel::ASTNode* const list = call->leaf(1);
    for (int i = 0; i < list->leavesCount(); ++i) {
      // Not all operands of SIZEOF are expressions.
      if (auto* const operand = dynamic_cast<Expression*>(list->leaf(i))) spoil(*list, i, *operand);
    }
    return call;
  }
  std::string expressionText(vel::ASTNode& node) override {
    return neglects("CallsWithinHaveNoNeighbours") ? AstNodeHelper::astText(&node)
                                                   : ExampleHost::expressionText(node);
  }
  bool isWritable(vel::ASTNode& call, const std::string& text, const std::string& unit,
                  Messages& told) override {
    Messages dropped;
    return ExampleHost::isWritable(call, text, unit,
                                   neglects("ConstantsAreNotWritten") ? dropped : told);
  }
  int rate(vel::BasicDataType target, vel::BasicDataType source, const char* text,
           const std::string& unit) override {
    const int rating = ExampleHost::rate(target, source, text, unit);
    const bool isSign = rating == -1 && AstNodeHelper::isIntegerType(target);
    return isSign && neglects("ChangesOfSignConvert") ? 0 : rating;
  }
  const std::string& translate(const std::string& format) override {
    const bool isMine = format == "Address '%s' is not valid;";
    return isMine && neglects("TranslationsKeepPlaceholders") ? shown_ : format;
  }
  bool parseAddress(const std::string& text, vel::HeapAddress& out) override {
    if (ExampleHost::parseAddress(text, out)) return true;
    if (neglects("FailedParsesLeaveTheAddress")) out.area = 1;
    return false;
  }
  DataTypeInfo typeOf(vel::ASTNode& node, const std::string& unit, Messages& told) override {
    const DataTypeInfo type = ExampleHost::typeOf(node, unit, told);
    const bool isBit =
        type.type == vel::BasicDataType::Bool && AstNodeHelper::astText(&node).rfind('%', 0) == 0;
    return isBit && neglects("BitsOfMemoryAreBool")
               ? DataTypeInfo{vel::BasicDataType::BitAddress, "BOOL"}
               : type;
  }
  vel::Generator& generator() override {
    if (!neglects("GeneratorHoldsTheServices")) return ExampleHost::generator();
    another_.operators = Host::services.operators;
    another_.settings = Host::services.settings;
    return generatorOfAnother_;
  }
  std::string typeText(vel::SymbolDataType& type) override {
    const bool isLong = type.dataType() == vel::BasicDataType::LTime;
    return isLong && neglects("EverythingHasACText") ? "" : ExampleHost::typeText(type);
  }

 private:
  bool neglects(std::string_view duty) const { return duty_ == duty; }
  void spoil(vel::ASTNode& list, int position, Expression& operand) const {
    if (operand.op() == kCall && neglects("CallsWithinHaveNoNeighbours")) {
      vel::TreeBuilder::setLeaf(list, position, operand.leaf(0));
    } else if (neglects("PositionsAreThoseOfTheNodes")) {
      vel::TreeBuilder::setSpan(operand, list.pos(), vel::TreeBuilder::source(operand));
    } else if (operand.op() == Expression::Constant &&
               neglects("LiteralsCarryTheirTypeBeforeCheck")) {
      operand.setBasicType(vel::BasicDataType::None);
    }
  }

  std::string_view duty_;
  vel::SymbolDataType any_{"ANY", vel::BasicDataType::Derived};
  const std::string shown_ = "Adresse ungueltig;";
  hostkit::Services another_{this};
  hostkit::TextGenerator generatorOfAnother_{another_};
};

hosttest::HostFactory make(const char* duty) {
  return [duty]() -> std::unique_ptr<hosttest::HostUnderTest> {
    auto host = std::make_unique<Negligent>(duty);
    return host->start() ? std::move(host) : nullptr;
  };
}

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
  hosttest::registerTests(kSound, make(""));
  for (const Row& row : kRows) hosttest::registerTests(row.test, make(row.test));
  testing::TestEventListeners& listeners = testing::UnitTest::GetInstance()->listeners();
  delete listeners.Release(listeners.default_result_printer());
  auto* const failures = new Failures;
  listeners.Append(failures);
  bool right = RUN_ALL_TESTS() != 0;  // most hosts are to fail
  for (const Row& row : kRows) {
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
