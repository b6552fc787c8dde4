// An add-on with one operator, DEADBAND. The page at the end of the file describes it.
#include <memory>
#include <string_view>

#include "core/add_on_api.h"
#include "core/messages.h"
#include "core/operator.h"
#include "host/generator.h"

namespace {

constexpr vel::MessageFormat kNegativeWidth{0xA0001, vel::Severity::Error,
                                            "The width '%s' of a dead band is negative;"};

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
    vel::ASTNode* const width = list->leaf(1);
    if (!isReal(ii, list->leaf(0), messages, pouName) || !isReal(ii, width, messages, pouName)) {
      return false;
    }
    const std::string text = AstNodeHelper::astText(width);
    if (AstNodeHelper::isConstant(width) && text.front() == '-') {
      vel::report(ii, messages, kNegativeWidth, width->pos(), text);
      return false;
    }
    resultType = "REAL";
    return true;
  }

  std::string generate(vel::Generator* gen, vel::ASTNode* invocation) override {
    const vel::ASTNode* const list = parameters(invocation);
    if (list == nullptr) return {};
    return "DEADBAND(" + gen->expressionText(list->leaf(0)) + ", " +
           gen->expressionText(list->leaf(1)) + ")";
  }

 private:
  // The parameter list; null unless it has two parameters.
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

constexpr vel::OperatorDescription kDescription{sizeof kDescription, "IN WIDTH", R"(# DEADBAND

`DEADBAND(IN, WIDTH)` is `IN` where that is farther than `WIDTH` from zero, and 0 elsewhere. Both
are of type REAL, and so is the result.

- 0xA0001 error `The width '%s' of a dead band is negative;`: for a width that is a literal.
)"};

}  // namespace

bool RegisterOperators(vel::OpManagerAPI* registry) {
  auto deadband = std::make_unique<DeadbandOperator>("DEADBAND");
  if (!registry->registerOperator(deadband.get())) return false;
  static_cast<void>(deadband.release());  // the registry owns it now
  return true;
}

const vel::OperatorDescription* DescribeOperator(const char* name) {
  return name == std::string_view("DEADBAND") ? &kDescription : nullptr;
}
