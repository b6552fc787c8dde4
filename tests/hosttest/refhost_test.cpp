// The reference host keeps every duty.
#include <gtest/gtest.h>

#include <iostream>
#include <memory>
#include <optional>

#include "core/op_manager_api.h"
#include "hostkit/hosttest/host_under_test.h"
#include "hostkit/operator_inputs.h"
#include "hostkit/plugin_library.h"
#include "refhost/emit/file_writer.h"
#include "refhost/emit/function_writer.h"
#include "refhost/prelude/prelude.h"
#include "refhost/semantics/analyser.h"
#include "refhost/syntax/parser.h"

namespace {

using hosttest::Section;

std::string declaration(const hosttest::Variable& variable) {
  const char* block = "VAR ";
  if (variable.section == Section::Constant) block = "VAR CONSTANT ";
  if (variable.section == Section::Input) block = "VAR_INPUT ";
  if (variable.section == Section::InOut) block = "VAR_IN_OUT ";
  if (variable.section == Section::BitParameter) block = "VAR_INPUT {bitparam} ";
  return block + variable.name + " : " + variable.type + "; END_VAR\n";
}

std::string sourceOf(const hosttest::Unit& unit, const std::string& body) {
  const bool block = unit.type == vel::POUType::FunctionBlock;
  const std::string word = block ? "FUNCTION_BLOCK" : "PROGRAM";
  std::string text = word + " " + unit.name + "\n";
  for (const hosttest::Variable& variable : unit.variables) text += declaration(variable);
  return text + body + "\nEND_" + word + "\n";
}

class ReferenceHost final : public hosttest::HostUnderTest {
 public:
  bool start() {
    std::string error;
    if (!library_.load(VELOPS_PLUGIN, &services_, error)) {
      std::cerr << error << '\n';
      return false;
    }
    services_.operators = library_.registry();
    hostkit::declareFunctionOperators(services_);
    services_.symbols.keep();
    makeGenerator(nullptr);
    return true;
  }

  vel::InternalInterface& services() override { return services_; }
  vel::Generator& generator() override { return function_->generator(); }

  // The analysis has the operators check all calls, and does all that stands between check and
  // generate.
  vel::ASTNode* parse(const std::vector<hosttest::Unit>& units,
                      const std::string& statement) override {
    messages_ = {};
    services_.memory.releaseState();
    services_.symbols.forget();
    tree_ = std::make_unique<refhost::Tree>();
    sources_ = std::make_unique<refhost::SourceManager>();
    std::string text;
    for (const hosttest::Unit& unit : units) {
      text += sourceOf(unit, text.empty() ? statement + ";" : "");
    }
    const int file = sources_->add("test.st", text);
    refhost::parse(*sources_, static_cast<std::uint32_t>(file), *tree_, messages_);
    refhost::Prelude prelude(*sources_, *tree_, messages_);
    refhost::Analyser(services_, *tree_, prelude, messages_).run();
    // Names what the operators ask for.
    refhost::FileWriter(services_, *sources_, names_, messages_).text();
    makeGenerator(services_.symbols.unit(units.front().name));

    vel::ASTNode* first = nullptr;
    const auto isCall = [&first](const vel::ASTNode& node) {
      if (refhost::kindOf(node) != refhost::NodeKind::Invocation) return false;
      first = const_cast<vel::ASTNode*>(&node);
      return true;
    };
    refhost::anyNode(*tree_->units.front()->leaf(refhost::Unit::kBody), isCall);
    return first;
  }

  bool setNotation(int notation) override {
    services_.notation = notation;
    return true;
  }
  bool setLocalIo(const std::string& ranges) override {
    services_.settings.localIoAddress = ranges;
    return true;
  }

 private:
  // For a function of `unit`, null for none.
  void makeGenerator(const refhost::UnitSymbol* unit) {
    function_.reset();
    file_.emplace(services_, *sources_, names_, messages_);
    function_.emplace(*file_, unit);
  }

  refhost::Services services_{0, {}};
  hostkit::PluginLibrary library_;
  refhost::Diagnostics messages_;
  std::unique_ptr<refhost::SourceManager> sources_ = std::make_unique<refhost::SourceManager>();
  std::unique_ptr<refhost::Tree> tree_;
  refhost::SymbolNames names_;
  std::optional<refhost::FileContext> file_;
  std::optional<refhost::FunctionWriter> function_;
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  hosttest::registerTests("ReferenceHost", [] {
    auto host = std::make_unique<ReferenceHost>();
    return host->start() ? std::move(host) : nullptr;
  });
  return RUN_ALL_TESTS();
}
