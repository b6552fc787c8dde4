// An add-on with faults, and with two operators that work: SCALED and HALVED.
#include <cstdlib>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "core/add_on_api.h"
#include "core/checks.h"
#include "core/fc_operator.h"
#include "host/ast_node_helper.h"
#include "host/generator.h"

namespace {

bool faultIs(std::string_view name) {
  const char* const fault = std::getenv("ADD_ON_FAULT");
  return fault != nullptr && fault == name;
}

struct Silent : std::exception {
  const char* what() const noexcept override { return nullptr; }
};

// SCALED(IN, FACTOR), where FACTOR is a literal.
class ScaledOperator : public vel::STOperator {
 public:
  using STOperator::STOperator;
  bool check(vel::InternalInterface* /*ii*/, vel::ASTNode* invocation,
             std::vector<vel::VELMessage>& /*messages*/, std::string& resultType,
             const std::string& /*pouName*/) override {
    const vel::ASTNode* const list = invocation->leavesCount() == 2 ? invocation->leaf(1) : nullptr;
    if (list == nullptr || list->leavesCount() != 2) return false;
    static_cast<void>(std::stod(AstNodeHelper::astText(list->leaf(1))));
    resultType = "REAL";
    return true;
  }
  std::string generate(vel::Generator* gen, vel::ASTNode* invocation) override {
    vel::ASTNode* const list = invocation->leaf(1);
    return "((f32)(" + gen->expressionText(list->leaf(0)) + ") * " +
           gen->expressionText(list->leaf(1)) + ")";
  }
};

// HALVED(VALUE, TIMES), a call of a function in C whose inputs the host has to declare.
class HalvedOperator : public vel::FCOperator {
 public:
  using FCOperator::FCOperator;
  std::string staticCode(vel::Generator* /*gen*/) override {
    return "static inline f64 HALVED(f64 value, int times) { return value / (1 << times); }\n";
  }
  bool check(vel::InternalInterface* ii, vel::ASTNode* invocation,
             std::vector<vel::VELMessage>& messages, std::string& resultType,
             const std::string& /*pouName*/) override {
    resultType = "REAL";
    return vel::checkParams(ii, invocation, messages);
  }
};

// Does what its name says, and nothing else.
class FaultyOperator : public vel::STOperator {
 public:
  using STOperator::STOperator;
  std::string staticCode(vel::Generator* /*gen*/) override {
    if (name == "THROWS_STATIC_CODE") throw Silent();
    return {};
  }
  bool check(vel::InternalInterface* /*ii*/, vel::ASTNode* /*invocation*/,
             std::vector<vel::VELMessage>& /*messages*/, std::string& resultType,
             const std::string& /*pouName*/) override {
    if (name == "THROWS_NUMBER") throw 7;
    resultType = "REAL";
    return name != "REFUSES";
  }
  std::string generate(vel::Generator* gen, vel::ASTNode* invocation) override {
    if (name == "THROWS_GENERATE") throw std::out_of_range("no such gear");
    return name == "GIVES_NO_C" ? "" : gen->expressionText(invocation->leaf(1)->leaf(0));
  }
};

template <typename Operator>
bool add(vel::OpManagerAPI* registry, const char* name) {
  auto op = std::make_unique<Operator>(name);
  if (!registry->registerOperator(op.get())) return false;
  static_cast<void>(op.release());
  return true;
}

}  // namespace

bool RegisterOperators(vel::OpManagerAPI* registry) {
  if (faultIs("register")) throw std::runtime_error("no licence");
  if (faultIs("refuse")) return false;
  for (const char* const name :
       {"THROWS_NUMBER", "THROWS_GENERATE", "THROWS_STATIC_CODE", "GIVES_NO_C", "REFUSES"}) {
    if (!add<FaultyOperator>(registry, name)) return false;
  }
  return add<ScaledOperator>(registry, "SCALED") && add<HalvedOperator>(registry, "HALVED");
}

#ifdef DESCRIBES
const vel::OperatorDescription* DescribeOperator(const char* name) {
  // As a later version may have it.
  static const struct {
    vel::OperatorDescription known;
    const char* more;
  } later = {{sizeof later, "IN FACTOR", "# SCALED\n\nThe number IN times FACTOR."}, "more"};
  static const std::pair<std::string_view, vel::OperatorDescription> others[] = {
      {"HALVED", {sizeof later.known, "VALUE TIMES", nullptr}},
      {"REFUSES", {sizeof later.known, "", nullptr}},
      {"small", {sizeof(std::size_t), nullptr, nullptr}},
      {"comma", {sizeof later.known, "IN,FACTOR", nullptr}},
      {"blanks", {sizeof later.known, "IN  FACTOR", nullptr}},
      {"twice", {sizeof later.known, "IN FACTOR in", nullptr}}};
  const bool scaled = std::string_view(name) == "SCALED";
  if (scaled && faultIs("describe")) throw 7;
  for (const auto& [what, description] : others) {
    if (what == name || (scaled && faultIs(what))) return &description;
  }
  return scaled ? &later.known : nullptr;
}
#endif
