// A host that answers as the test says and records what it is asked.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "hostkit/services.h"
#include "hostkit/symbol_table.h"
#include "support/test_tree.h"

using Messages = std::vector<vel::VELMessage>;

// A device address that the host knows; `raw` is its place in memory, `type` that of its unit.
struct TestAddress {
  vel::HeapAddress address;
  std::uint32_t raw = 0;
  vel::BasicDataType type = vel::BasicDataType::None;
  vel::JapanComponent parts;
};

// Expressions have the type that their text names: `i`, `i1` and `i + 1` are INT, see the table
// in test_host.cpp. Literals have the kit's, except that `true` in small letters has none.
class TestHost : public hostkit::Answers, public hostkit::Services {
 public:
  TestHost() : Services(this) {}

  static DataTypeInfo typeOf(const std::string& text);

  // Answers.
  int rating = 0;                    // of conversions
  bool translates = false;           // messages: "~" before the format, in a text that the
                                     // next translation overwrites
  bool hasSettings = true;           // of the project
  std::set<std::string> readOnly;    // refused, with a host message, when written
  std::set<std::string> complaints;  // expressions whose type is asked for with a host message
  std::set<std::string> refusedUnits;
  std::map<std::string, TestAddress> addresses;    // by text, letter case included
  static constexpr std::uint32_t kNoPlace = 4000;  // of addresses that the host does not know
  // Declares a unit with parameters of these kinds; the latest of a name counts. A kind
  // below 0 stands for a parameter that is missing.
  void declare(const std::string& name, vel::POUType type, const std::vector<int>& kinds);
  // Symbols beside those that texts name, by unit and name: `P:x`.
  std::map<std::string, std::unique_ptr<vel::Symbol>> named;
  // Adds a variable to them that is kept at `raw`, where the program has put it when
  // `address` is not empty.
  void place(const std::string& unitAndName, std::uint32_t raw,
             const vel::HeapAddress& address = {});

  // Records. `calls` are comparisons, type specifications resolved, what is to be written,
  // constants prepared and edges of the call tree; `asked` these and every other question.
  std::vector<std::string> calls;
  std::vector<std::string> asked;
  std::vector<std::unique_ptr<vel::SymbolPOU>> units;
  // One per line; the list is empty then.
  static std::string take(std::vector<std::string>& list);
  void record(const std::string& call);

  // Every message as `@OFFSET E C0040 TEXT` (W for a warning), one per line; fails the test
  // when a record is not of the agreed form.
  static std::string describe(const Messages& messages);

  vel::SymbolManager* symbolManager() override {
    asked.emplace_back("symbols");
    return Services::symbolManager();
  }
  vel::ProjectSettings* projectSettings() override {
    return hasSettings ? Services::projectSettings() : nullptr;
  }
  DataTypeInfo typeOf(vel::ASTNode& expression, const std::string& unit,
                      Messages& messages) override {
    const std::string text = TestTree::text(&expression);
    asked.push_back("type " + text + " in " + unit);
    if (complaints.count(text) != 0) {
      messages.push_back({expression.pos(), -1, 1, 0xF0002, text + " in " + unit, "", ""});
    }
    return typeOf(text);
  }
  vel::Symbol* find(const char* name, const char* unit, vel::Symbol::Type kind) override;
  bool addUnit(vel::SymbolPOU* unit) override;
  int rate(vel::BasicDataType target, vel::BasicDataType source, const char* sourceText,
           const std::string& unit) override {
    record(AstNodeHelper::basicDataTypeText(target) +
           " := " + AstNodeHelper::basicDataTypeText(source) + " " +
           (sourceText != nullptr ? sourceText : "-") + " in " + unit);
    return rating;
  }
  bool isWritable(vel::ASTNode& invocation, const std::string& text, const std::string& unit,
                  Messages& messages) override {
    record("write " + text + " in " + unit);
    const bool writable = readOnly.count(text) == 0;
    if (!writable) messages.push_back({invocation.pos(), -1, 1, 0xF0003, text, "", ""});
    return writable;
  }
  vel::SymbolDataType* resolve(vel::ASTNode& typeSpec, vel::VarContainer& unit) override {
    record("spec " + TestTree::text(&typeSpec) + " in " + unit.name());
    return Answers::resolve(typeSpec, unit);
  }
  bool parseAddress(const std::string& text, vel::HeapAddress& out) override {
    asked.push_back("address " + text);
    const auto found = addresses.find(text);
    if (found != addresses.end()) out = found->second.address;
    return found != addresses.end();
  }
  vel::HeapRawAddr place(const vel::HeapAddress& address) override { return {known(address).raw}; }
  vel::BasicDataType addressType(const vel::HeapAddress& address) override {
    return known(address).type;
  }
  vel::JapanComponent components(const std::string& text) override {
    const auto found = addresses.find(text);
    return found != addresses.end() ? found->second.parts : vel::JapanComponent();
  }
  std::string typeText(vel::SymbolDataType& type) override { return type.typeName() + "_t"; }
  const std::string& translate(const std::string& format) override {
    asked.emplace_back("translate");
    translation_ = "~" + format;
    return translates ? translation_ : format;
  }
  void addCall(const std::string& caller, const std::string& callee,
               vel::TextLocation where) override {
    record(caller.empty() ? "firmware " + callee
                          : caller + " -> " + callee + " @" + std::to_string(where.offset()));
  }

 private:
  TestAddress known(const vel::HeapAddress& address) const;

  hostkit::SymbolTable types_;
  std::vector<std::unique_ptr<vel::Symbol>> variables_;
  std::string translation_;
};

// The C text of an expression is its source with a prime (`x'`), of a type its name with `_t`.
class TestGenerator : public hostkit::TextGenerator {
 public:
  explicit TestGenerator(TestHost& host) : TextGenerator(host), host_(host) {}

  std::map<std::string, std::string> options;  // not those of the host's settings
  std::map<std::string, std::string> texts;    // of expressions that have another

  const char* optionText(const char* name) override { return options[name].c_str(); }
  std::string variableText(vel::SymbolVar* variable, int flag, const std::string& unit) override {
    return unit + "." + variable->name() + "/" + std::to_string(flag);
  }
  std::string expressionText(vel::ASTNode* expression) override {
    const std::string source = TextGenerator::expressionText(expression);
    const auto other = texts.find(source);
    return other != texts.end() ? other->second : source + "'";
  }
  std::string prepareConstant(const std::string& text, vel::BasicDataType type) override {
    host_.record("constant " + text + " " + AstNodeHelper::basicDataTypeText(type));
    return "discarded";
  }

 private:
  TestHost& host_;
};
