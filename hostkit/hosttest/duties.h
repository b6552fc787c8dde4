// Helpers of the tests of duties.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/ast_node_helper.h"
#include "host/expression.h"
#include "host/symbol_manager.h"
#include "hostkit/hosttest/host_under_test.h"

namespace hosttest {

// A test, named after a duty of a host.
struct Duty {
  const char* name;
  void (*test)(HostUnderTest& host);
};
using Duties = std::vector<Duty>;

Duties typeDuties();
Duties symbolDuties();
Duties treeDuties();
Duties expressionDuties();
Duties ratingDuties();
Duties textDuties();
Duties addressDuties();
Duties serviceDuties();
Duties callDuties();  // whole calls, which depend on the other duties

struct ElementaryType {
  const char* name;
  vel::BasicDataType number;
  const char* numberName;  // for a bit string, the integer whose number it shares
  int size;                // bytes; 0 where no operator asks for it
};
const std::vector<ElementaryType>& elementaryTypes();

// The names of the plugin's operators, independent of the host's registry.
const std::vector<std::string>& pluginOperators();

inline int number(vel::BasicDataType type) { return static_cast<int>(type); }
std::string toLower(std::string text);

// Looks a symbol up in the host's symbol table; null when there is none.
vel::Symbol* find(HostUnderTest& host, const std::string& name, const std::string& scope,
                  vel::Symbol::Type kind);

// Collects the failing rows of one test.
class Faults {
 public:
  void addIf(bool wrong, const std::string& what) {
    if (!wrong) return;
    ++count_;
    if (count_ <= kShown) text_ += (text_.empty() ? "" : ", ") + what;
  }
  // Empty when no row has failed.
  std::string text() const {
    return count_ > kShown ? text_ + ", ... (" + std::to_string(count_) + " in all)" : text_;
  }

 private:
  static constexpr int kShown = 8;
  int count_ = 0;
  std::string text_;
};

// A program unit "Main" with a variable of each kind that the tests need.
Unit mainUnit();

// A call in the first of several units.
class Call {
 public:
  Call(HostUnderTest& host, std::vector<Unit> units, const std::string& statement);
  Call(HostUnderTest& host, const std::string& statement) : Call(host, {mainUnit()}, statement) {}

  // False when the tree of the call does not have the contract's shape, on which most tests
  // rely. Those tests are then skipped with why() as the reason.
  bool isUsable() const { return list_ != nullptr; }
  static const char* why() {
    return "the call has no tree of the contract's shape; see CallsHaveTheirShape";
  }

  vel::ASTNode* invocation() const { return invocation_; }
  int parameters() const { return list_->leavesCount(); }
  // Null when there is no such parameter.
  vel::ASTNode* parameter(int i) const;
  const std::string& unit() const { return unit_; }
  // The type of a parameter, requested as an operator does; appends to `messages`.
  DataTypeInfo typeOf(int parameter);

  // Calls the operator's check, and sets `messages` and `resultType`.
  bool check();
  // To be called when check() has accepted the call.
  void accept() { host_.accepted(*invocation_, resultType); }
  std::string generate();

  std::vector<vel::VELMessage> messages;
  std::string resultType;

 private:
  HostUnderTest& host_;
  std::string unit_;
  vel::ASTNode* invocation_;
  vel::ASTNode* list_ = nullptr;
};

}  // namespace hosttest
