// What the tests of duties share.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/ast_node_helper.h"
#include "host/expression.h"
#include "host/symbol_manager.h"
#include "hostkit/hosttest/host_under_test.h"

namespace hosttest {

// A test, and the duty of a host that it is named after.
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
Duties callDuties();  // of whole calls: they need the others

struct ElementaryType {
  const char* name;
  vel::BasicDataType number;
  const char* numberName;  // that of the integer whose number a bit string shares
  int size;                // bytes; 0 where no operator asks
};
const std::vector<ElementaryType>& elementaryTypes();

// The names of the plugin's operators, whatever the host has made of its registry.
const std::vector<std::string>& pluginOperators();

inline int number(vel::BasicDataType type) { return static_cast<int>(type); }
std::string toLower(std::string text);

// Null for none.
vel::Symbol* find(HostUnderTest& host, const std::string& name, const std::string& scope,
                  vel::Symbol::Type kind);

// Collects what is wrong with rows of one test.
class Faults {
 public:
  void addIf(bool wrong, const std::string& what) {
    if (!wrong) return;
    ++count_;
    if (count_ <= kShown) text_ += (text_.empty() ? "" : ", ") + what;
  }
  // Empty when nothing is wrong.
  std::string text() const {
    return count_ > kShown ? text_ + ", ... (" + std::to_string(count_) + " in all)" : text_;
  }

 private:
  static constexpr int kShown = 8;
  int count_ = 0;
  std::string text_;
};

// A program unit "Main" with a variable of each sort that the tests need.
Unit mainUnit();

// A call in the first of some units.
class Call {
 public:
  Call(HostUnderTest& host, std::vector<Unit> units, const std::string& statement);
  Call(HostUnderTest& host, const std::string& statement) : Call(host, {mainUnit()}, statement) {}

  // False for a tree without the shape that all tests but those of the shape rely on; these
  // skip themselves with why().
  bool isUsable() const { return list_ != nullptr; }
  static const char* why() {
    return "the call has no tree of the contract's shape; see CallsHaveTheirShape";
  }

  vel::ASTNode* invocation() const { return invocation_; }
  int parameters() const { return list_->leavesCount(); }
  // Null where there is none.
  vel::ASTNode* parameter(int i) const;
  const std::string& unit() const { return unit_; }
  // The type of a parameter as an operator asks for it; the host's messages are kept below.
  DataTypeInfo typeOf(int parameter);

  // The verdict of the operator, whose messages and result type are kept below.
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
