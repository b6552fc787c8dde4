#include "operators/func/sizeof.h"

#include "core/checks.h"
#include "core/device_address.h"
#include "core/emission.h"
#include "core/invocation.h"
#include "core/messages.h"
#include "host/expression.h"
#include "host/symbol.h"
#include "host/symbol_manager.h"

namespace vel {
namespace {

// Parameters after the first are ignored.
constexpr InvocationShape kFirstParameter =
    InvocationShape{1, InvocationShape::kNoLimit}.readingFirst(1);

// Decides by the fields of the address, and ignores whether the host could parse the text.
bool isAddress(InternalInterface* ii, const std::string& text, HeapAddress& out) {
  constexpr std::uint32_t kNone = ~0U;
  parseAddress(ii, text, out);
  return out.area != 0 && out.unitSize != kNone && out.position != kNone;
}

bool isTypeSpec(ASTType kind) {
  switch (kind) {
    case ASTType::NamedTypeSpec:
    case ASTType::StringTypeSpec:
    case ASTType::SubrangeTypeSpec:
    case ASTType::ArrayTypeSpec:
    case ASTType::EnumTypeSpec:
    case ASTType::StructTypeSpec:
    case ASTType::PointerTypeSpec:
    case ASTType::ReferenceTypeSpec:
      return true;
    default:
      return false;
  }
}

// Null unless `symbol` is a function block.
const SymbolPOU* asFunctionBlock(const Symbol* symbol) {
  const auto* unit = dynamic_cast<const SymbolPOU*>(symbol);
  return unit != nullptr && unit->type() == POUType::FunctionBlock ? unit : nullptr;
}

bool refuseUndefined(InternalInterface* ii, ASTNode* invocation, const std::string& operand,
                     std::vector<VELMessage>& messages, std::string& resultType) {
  resultType = "INVALID";
  report(ii, messages, message::kUndefined, invocation->pos(), operand);
  return false;
}

// Finds the C type of an operand; the results are empty when it has none.
class TypeText {
 public:
  TypeText(Generator* gen, ASTNode* invocation, const std::string& scope)
      : gen_(gen), invocation_(invocation), scope_(scope) {}

  std::string ofSpecification(VarContainer* unit, ASTNode* specification) {
    bool known = false;
    return ofType(VarDeclaration::astSpec2SymbolDataType(gen_->ii, unit, specification, &known));
  }

  // Empty for a literal without a type prefix (`INT#5`), since its type is not fixed.
  std::string ofLiteral(ASTNode* operand) {
    ASTNode* node = operand->type() == ASTType::Expression ? leafOf(operand, 0) : operand;
    const auto* literal = dynamic_cast<const ConstantValue*>(node);
    if (literal == nullptr || !literal->isFixedType()) return {};
    return ofType(findDataType(gen_->ii, literal->typeStr().c_str()));
  }

  std::string ofName(ASTNode* operand) {
    const std::string name = AstNodeHelper::astText(operand);
    Symbol* symbol = gen_->ii->symbolManager()->symbol(name.c_str(), scope_.c_str(), Symbol::All);
    switch (symbol != nullptr ? symbol->symbolType() : Symbol::None) {
      case Symbol::DataType:
        return ofType(dynamic_cast<SymbolDataType*>(symbol));
      case Symbol::Variable:
        return ofVariable(operand, dynamic_cast<const SymbolVar*>(symbol));
      case Symbol::Typed: {
        const auto* typed = dynamic_cast<const SymbolTyped*>(symbol);
        return ofType(typed != nullptr ? typed->dataType() : nullptr);
      }
      case Symbol::Pou:
        if (const SymbolPOU* block = asFunctionBlock(symbol)) return ofType(block->fbType());
        break;
      default:
        break;
    }
    return ofAddress(name);
  }

 private:
  std::string ofType(SymbolDataType* type) {
    return type != nullptr ? clanApi(gen_)->typeText(type) : std::string();
  }

  std::string ofVariable(ASTNode* operand, const SymbolVar* variable) {
    const auto* expression = dynamic_cast<const Expression*>(operand);
    if (expression != nullptr && expression->op() == Expression::Typed) {
      return AstNodeHelper::basicDataToCTypeText(typeForText(gen_, invocation_, operand).type);
    }
    return ofType(variable != nullptr ? variable->dataType() : nullptr);
  }

  std::string ofAddress(const std::string& text) {
    HeapAddress address;
    if (!isAddress(gen_->ii, text, address)) return {};
    const BasicDataType type = gen_->ii->deviceMemory()->iecAddressType(address);
    return ofType(AstNodeHelper::dataType(
        gen_->ii, type == BasicDataType::BitAddress ? BasicDataType::Bool : type));
  }

  Generator* gen_;
  ASTNode* invocation_;
  const std::string& scope_;
};

}  // namespace

bool SizeofOperator::check(InternalInterface* ii, ASTNode* invocation,
                           std::vector<VELMessage>& messages, std::string& resultType,
                           const std::string& pouName) {
  // Requested for its side effect: a host may create its symbol table on the first request.
  ii->symbolManager();
  ASTNode* list = leafOf(invocation, 1);
  if (list != nullptr) {
    resultType = "UDINT";
    if (isTypeSpec(list->type())) return true;
    if (list->type() != ASTType::ParameterList) {
      return refuseUndefined(ii, invocation, textOf(leafOf(list, 0)), messages, resultType);
    }
  }
  list = checkShape(ii, invocation, kFirstParameter, messages);
  if (list == nullptr) return false;

  ASTNode* operand = list->leaf(0);
  if (AstNodeHelper::isConstant(operand)) return true;
  const std::string text = AstNodeHelper::astText(operand);
  HeapAddress address;
  if (isAddress(ii, text, address)) return true;

  const std::string scope = effectivePouName(invocation, pouName);
  const Symbol* symbol = ii->symbolManager()->symbol(text.c_str(), scope.c_str(), Symbol::All);
  switch (symbol != nullptr ? symbol->symbolType() : Symbol::None) {
    case Symbol::DataType:
    case Symbol::Variable:
    case Symbol::Typed:
      return true;
    case Symbol::Pou:
      if (asFunctionBlock(symbol) != nullptr) return true;
      resultType = "INVALID";
      return false;
    default:
      return refuseUndefined(ii, invocation, text, messages, resultType);
  }
}

std::string SizeofOperator::generate(Generator* gen, ASTNode* invocation) {
  const std::string scope = enclosingPouName(invocation);
  ASTNode* list = leafOf(invocation, 1);
  if (scope.empty() || list == nullptr) return {};
  Symbol* unit = gen->ii->symbolManager()->symbol(scope.c_str(), "", Symbol::Pou);
  if (unit == nullptr) return {};

  TypeText typeText(gen, invocation, scope);
  std::string type;
  if (isTypeSpec(list->type())) {
    type = typeText.ofSpecification(dynamic_cast<VarContainer*>(unit), list);
  } else if (list->type() == ASTType::ParameterList) {
    ASTNode* operand = leafOf(list, 0);
    if (operand == nullptr) return {};
    type =
        AstNodeHelper::isConstant(operand) ? typeText.ofLiteral(operand) : typeText.ofName(operand);
  }

  if (type.empty() && argumentList(invocation) == nullptr) return {};
  std::string out = emptyCallText();
  out += "sizeof(";
  if (type.empty()) {
    genArgs(gen, list, out);
  } else {
    out += type;
  }
  out += ')';
  return out;
}

}  // namespace vel
