// An add-on with one operator: DEADBAND(IN, WIDTH), of type REAL, is IN where that is farther
// than WIDTH from zero, and 0 elsewhere.
#include <memory>

#include "core/add_on_api.h"
#include "core/messages.h"
#include "core/operator.h"
#include "host/generator.h"

namespace {

class DeadbandOperator final : public vel::STOperator {
 public:
  using STOperator::STOperator;

  std::string staticCode(vel::Generator* /*gen*/) override {
    return "static inline f32 DEADBAND(f32 in, f32 width) {\n"
           "  return in > width || in < -width ? in : 0;\n"
           "}\n";
  }

  bool check(vel::InternalInterface* ii, vel::ASTNode* invocation,
             std::vector<vel::VELMessage>& messages, std::string& resultType,
             const std::string& pouName) override {
    const vel::ASTNode* const list = parameters(invocation);
    if (list == nullptr) {
      vel::report(ii, messages, vel::message::kParameterCount, invocation->pos(), name);
      return false;
    }
    const bool accepted = isReal(ii, list->leaf(0), messages, pouName) &&
                          isReal(ii, list->leaf(1), messages, pouName);
    if (accepted) resultType = "REAL";
    return accepted;
  }

  std::string generate(vel::Generator* gen, vel::ASTNode* invocation) override {
    const vel::ASTNode* const list = parameters(invocation);
    if (list == nullptr) return {};
    return "DEADBAND(" + gen->expressionText(list->leaf(0)) + ", " +
           gen->expressionText(list->leaf(1)) + ")";
  }

 private:
  // Null unless there are two.
  static const vel::ASTNode* parameters(const vel::ASTNode* invocation) {
    if (invocation->leavesCount() < 2) return nullptr;
    const vel::ASTNode* const list = invocation->leaf(1);
    return list->type() == vel::ASTType::ParameterList && list->leavesCount() == 2 ? list : nullptr;
  }

  static bool isReal(vel::InternalInterface* ii, vel::ASTNode* parameter,
                     std::vector<vel::VELMessage>& messages, const std::string& pouName) {
    const std::string text = AstNodeHelper::astText(parameter);
    const vel::BasicDataType type = AstNodeHelper::dataType(ii, parameter, pouName, messages).type;
    if (AstNodeHelper::compareDataType(ii, vel::BasicDataType::Real, type, text.c_str(), pouName) >=
        0) {
      return true;
    }
    vel::report(ii, messages, vel::message::kCannotConvert, parameter->pos(), text,
                std::string("REAL"));
    return false;
  }
};

}  // namespace

bool RegisterOperators(vel::OpManagerAPI* registry) {
  auto deadband = std::make_unique<DeadbandOperator>("DEADBAND");
  if (!registry->registerOperator(deadband.get())) return false;
  static_cast<void>(deadband.release());  // the registry's from here on
  return true;
}
