// A host that answers as the test says and records what it is asked.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "hostkit/services.h"
#include "hostkit/symbol_table.h"

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
  static std::string describe(const std::vector<vel::VELMessage>& messages);

  vel::SymbolManager* symbolManager() override;
  vel::ProjectSettings* projectSettings() override;

  DataTypeInfo typeOf(vel::ASTNode& expression, const std::string& unit,
                      std::vector<vel::VELMessage>& messages) override;
  vel::Symbol* find(const char* name, const char* unit, vel::Symbol::Type kind) override;
  bool addUnit(vel::SymbolPOU* unit) override;
  int rate(vel::BasicDataType target, vel::BasicDataType source, const char* sourceText,
           const std::string& unit) override;
  bool isWritable(vel::ASTNode& invocation, const std::string& text, const std::string& unit,
                  std::vector<vel::VELMessage>& messages) override;
  vel::SymbolDataType* resolve(vel::ASTNode& typeSpec, vel::VarContainer& unit) override;
  bool parseAddress(const std::string& text, vel::HeapAddress& out) override;
  vel::HeapRawAddr place(const vel::HeapAddress& address) override;
  vel::BasicDataType addressType(const vel::HeapAddress& address) override;
  vel::JapanComponent components(const std::string& text) override;
  std::string typeText(vel::SymbolDataType& type) override;
  const std::string& translate(const std::string& format) override;
  void addCall(const std::string& caller, const std::string& callee,
               vel::TextLocation where) override;

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

  const char* optionText(const char* name) override;
  std::string variableText(vel::SymbolVar* variable, int flag, const std::string& unit) override;
  std::string expressionText(vel::ASTNode* expression) override;
  std::string prepareConstant(const std::string& text, vel::BasicDataType type) override;

 private:
  TestHost& host_;
};
