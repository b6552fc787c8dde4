#include "core/operator_manager.h"

#include <cxxabi.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <set>
#include <sstream>
#include <stdexcept>

#include "core/fc_operator.h"
#include "core/operator.h"
#include "core/registration.h"
#include "support/test_host.h"

namespace {

struct NamedOperator : vel::STOperator {
  using STOperator::STOperator;
  bool check(vel::InternalInterface*, vel::ASTNode*, std::vector<vel::VELMessage>&, std::string&,
             const std::string&) override {
    return false;
  }
  std::string generate(vel::Generator*, vel::ASTNode*) override { return {}; }
};

class Registry : public ::testing::Test {
 protected:
  bool hasUnit(const std::string& name) {
    return std::any_of(host.units.begin(), host.units.end(),
                       [&](const auto& unit) { return unit->name() == name; });
  }

  TestHost host;
};

std::string className(const vel::STOperator& op) {
  const std::unique_ptr<char, decltype(&std::free)> name(
      abi::__cxa_demangle(typeid(op).name(), nullptr, nullptr, nullptr), &std::free);
  return std::string(name.get()).substr(5);  // after "vel::"
}

// The names of each kind, in the order of registration.
std::map<std::string, std::vector<std::string>> namesOfTheProduct() {
  std::map<std::string, std::vector<std::string>> product;
  std::ifstream file(OPERATOR_NAMES);
  std::string kind;
  for (std::string line; std::getline(file, line);) {
    std::istringstream words(line.substr(0, line.find('#')));
    for (std::string word; words >> word;) {
      if (word.back() == ':') {
        kind = word;
      } else {
        product[kind].push_back(word);
      }
    }
  }
  return product;
}

// What is in `some` and not in the registry's, or the other way round, is `what`.
void expectSame(const std::vector<std::string>& product, const std::set<std::string>& registered,
                const std::string& what) {
  for (const std::string& name : product) {
    EXPECT_EQ(registered.count(name), 1U)
        << name << " is no operator of the registry that becomes " << what;
  }
  for (const std::string& name : registered) {
    EXPECT_EQ(std::count(product.begin(), product.end(), name), 1)
        << name << " becomes " << what
        << " and is not among these in tests/support/operator_names.txt";
  }
}

TEST_F(Registry, HoldsTheNamesOfTheProduct) {
  std::map<std::string, std::vector<std::string>> product = namesOfTheProduct();
  const std::unique_ptr<vel::OpManagerAPI> registry(CreateOpManager(&host));
  std::vector<std::string> names = {"kept"};
  registry->operatorNames(names);
  EXPECT_EQ(names.size(), 1U + static_cast<std::size_t>(registry->operatorCount()));
  EXPECT_EQ(std::vector<std::string>(names.begin(), names.begin() + 4),
            (std::vector<std::string>{"kept", "_READIDIRECT", "_WRITEODIRECT", "ABS"}));
  EXPECT_TRUE(std::is_sorted(names.begin() + 1, names.end(), vel::LessIgnoringCase()));

  std::map<std::string, std::set<std::string>> registered;
  std::map<std::string, int> totals;
  for (auto name = names.begin() + 1; name != names.end(); ++name) {
    vel::STOperator* op = registry->findOperator(*name);
    ASSERT_NE(op, nullptr) << *name;
    EXPECT_EQ(op->name, *name);
    ++totals[className(*op)];
    const bool isFunction = registry->isFCOperator(*name);
    registered[isFunction ? "functions:" : "units:"].insert(*name);
    EXPECT_EQ(hasUnit(*name), !isFunction) << *name;
  }
  expectSame(product["functions:"], registered["functions:"], "calls of a C function");
  expectSame(product["units:"], registered["units:"], "a program unit");
  const std::map<std::string, int> groups = {
      {"ConvertOperator", 327},      {"ToStrOperator", 40},  {"StrToOperator", 38},
      {"RealToIntegerOperator", 34}, {"ToBoolOperator", 20}, {"GeneralConvertOperator", 19},
      {"DirectIOOperator", 6},       {"ZMemOperator", 2},    {"BitParamOperator", 2},
      {"ToStrUniversalOperator", 2}};
  for (const auto& [name, count] : groups) EXPECT_EQ(totals[name], count) << name;
  EXPECT_EQ(totals["LimitOperator"], 1);
}

// Units are added in registration order, which the sorted registry does not show.
TEST_F(Registry, RegistersInOrder) {
  const std::unique_ptr<vel::OpManagerAPI> registry(CreateOpManager(&host));
  std::vector<std::string> order;
  for (const auto& unit : host.units) {
    EXPECT_EQ(unit->type(), vel::POUType::Operator);
    order.push_back(unit->name());
  }
  EXPECT_EQ(order, namesOfTheProduct()["units:"]);
}

TEST_F(Registry, RefusedUnitLeavesOneOut) {
  const std::unique_ptr<vel::OpManagerAPI> whole(CreateOpManager(&host));
  host.refusedUnits = {"MOVE", "SQRT"};
  const std::unique_ptr<vel::OpManagerAPI> registry(CreateOpManager(&host));
  EXPECT_EQ(registry->operatorCount(), whole->operatorCount() - 1);
  EXPECT_EQ(registry->findOperator("MOVE"), nullptr);
  EXPECT_NE(registry->findOperator("SQRT"), nullptr);
}

// A host in whose table of symbols there is no room.
struct FullHost : TestHost {
  bool addUnit(vel::SymbolPOU* unit) override {
    if (offered) offered();
    return !offered && TestHost::addUnit(unit);
  }
  std::function<void()> offered;
};

TEST_F(Registry, UnitsAreOfferedBeforeTheirNameIsKnown) {
  FullHost full;
  const auto fail = [] { throw std::runtime_error("full"); };
  full.offered = fail;
  EXPECT_EQ(CreateOpManager(&full), nullptr);

  full.offered = nullptr;
  const std::unique_ptr<vel::OpManagerAPI> registry(CreateOpManager(&full));
  std::vector<std::string> names;
  registry->operatorNames(names);
  const auto expectUnknown = [&] {
    std::vector<std::string> known;
    registry->operatorNames(known);
    EXPECT_EQ(known, names);
    EXPECT_EQ(registry->operatorCount(), static_cast<int>(names.size()));
    EXPECT_EQ(registry->findOperator("Added"), nullptr);
  };
  auto added = std::make_unique<NamedOperator>("Added");
  full.offered = expectUnknown;
  EXPECT_FALSE(registry->registerOperator(added.get()));
  full.offered = fail;
  EXPECT_THROW(registry->registerOperator(added.get()), std::runtime_error);
  expectUnknown();
  full.offered = nullptr;
  EXPECT_TRUE(registry->registerOperator(added.get()));
  EXPECT_EQ(registry->findOperator("ADDED"), added.release());
}

// Tells of its end, until which the registry knows it and all others.
struct MortalOperator : NamedOperator {
  MortalOperator(const std::string& operatorName, vel::OpManagerAPI& owner, std::string& told,
                 const int& all)
      : NamedOperator(operatorName), registry(owner), deaths(told), count(all) {}
  ~MortalOperator() override {
    deaths += name + " ";
    EXPECT_EQ(registry.findOperator(name), this);
    EXPECT_EQ(registry.operatorCount(), count);
  }
  vel::OpManagerAPI& registry;
  std::string& deaths;
  const int& count;
};

TEST_F(Registry, DeletesInOrderOfNames) {
  std::string deaths;
  int count = 0;
  std::unique_ptr<vel::OpManagerAPI> registry(CreateOpManager(&host));
  for (const char* name : {"zeta", "Beta", "_last", "alpha"}) {
    ASSERT_TRUE(registry->registerOperator(new MortalOperator(name, *registry, deaths, count)));
  }
  count = registry->operatorCount();
  registry.reset();
  EXPECT_EQ(deaths, "_last alpha Beta zeta ") << "of " << count;
}

TEST_F(Registry, RegistersClearsAndKeepsOwnership) {
  const std::unique_ptr<vel::OpManagerAPI> registry(CreateOpManager(&host));
  vel::STOperator* abs = registry->findOperator("ABS");
  NamedOperator duplicate("abs");
  EXPECT_FALSE(registry->registerOperator(nullptr));
  EXPECT_FALSE(registry->registerOperator(&duplicate));
  EXPECT_EQ(registry->findOperator("Abs"), abs);
  EXPECT_FALSE(hasUnit("abs"));

  ASSERT_TRUE(registry->registerOperator(new NamedOperator("Added")));
  EXPECT_TRUE(hasUnit("Added"));

  std::vector<std::string> names;
  registry->operatorNames(names);
  std::vector<std::unique_ptr<vel::STOperator>> operators;  // no longer the registry's
  operators.reserve(names.size());
  for (const std::string& name : names) operators.emplace_back(registry->findOperator(name));
  registry->clearOperators();
  EXPECT_EQ(registry->operatorCount(), 0);
  EXPECT_EQ(registry->findOperator("ADDED"), nullptr);
  EXPECT_EQ(operators.front()->name, "_READIDIRECT");
}

}  // namespace
