#include <algorithm>

#include "bench/operators/floor_steps.h"

namespace floors {
namespace {

// The part of a conversion's name before or behind "_TO_".
std::string_view endOf(std::string_view name, bool first) {
  const std::size_t at = name.find("_TO_");
  return first ? name.substr(0, at) : name.substr(at + 4);
}

int compare(const CheckCall& call, BasicDataType target, BasicDataType source, const char* text,
            const std::string& scope) {
  return AstNodeHelper::compareDataType(call.ii, target, source, text, scope);
}

// Checks of functions that the host declares.
ASTNode* countedList(const CheckCall& call) {
  call.ii->symbolManager();
  const int inputs = inputsOf(call.ii, writtenName(call.invocation));
  ASTNode* list = listOf(call.invocation);
  return list->leavesCount() == inputs ? list : nullptr;
}

// IN and N of a shift or rotation.
BasicDataType movedType(const CheckCall& call, const ASTNode* list, const std::string& scope) {
  const BasicDataType moved = typeOf(call, list->leaf(0), scope);
  if (!AstNodeHelper::isIntegerType(moved)) return BasicDataType::None;
  call.resultType = AstNodeHelper::basicDataTypeText(moved);
  const bool counts = AstNodeHelper::isIntegerType(typeOf(call, list->leaf(1), scope));
  return counts ? moved : BasicDataType::None;
}

// The type of the assignment's target; None for a call that is not assigned.
ASTNode* targetOf(const ASTNode* invocation) {
  const ASTNode* parent = invocation->parent();
  return parent->leavesCount() > 1 ? parent->leaf(0) : nullptr;
}

bool isKind(std::string_view text, std::string_view kind) {
  return text.substr(1, kind.size()) == kind;
}

bool parseAddress(const CheckCall& call, const std::string& text, vel::HeapAddress& address) {
  return call.ii->deviceMemory()->string2IecAddress(text, &address, false);
}

}  // namespace

bool refuseCount(CheckCall call, Start start, bool namesUpperCase) {
  if (start == Start::Sized || start == Start::SymbolTable || start == Start::CountedInputs) {
    call.ii->symbolManager();
  }
  if (start == Start::Sized) call.resultType = "UDINT";
  std::string name;
  if (start > Start::SymbolTable) name = writtenName(call.invocation);
  if (start == Start::UpperName || start == Start::UpperCountedInputs) name = stringToUpper(name);
  if (start >= Start::CountedInputs) inputsOf(call.ii, name);
  listOf(call.invocation);

  std::string shown = writtenName(call.invocation);
  if (namesUpperCase) shown = stringToUpper(shown);
  const std::string& format = call.ii->translate(
      "Too many parameters, too few parameters, or no variables assigned to the IN_OUT in PRG "
      "'%s';");
  vel::VELMessage& message = call.messages.emplace_back();
  message.location = call.invocation->pos();
  message.severity = 1;
  message.code = 0xC0040;
  message.text = AstNodeHelper::stringFormat(0xC0040, format.c_str(), shown.c_str());
  return false;
}

bool checkTyped(CheckCall call) {
  const std::string name = stringToUpper(writtenName(call.invocation));
  ASTNode* argument = listOf(call.invocation)->leaf(0);
  const BasicDataType type = typeOf(call, argument, scopeOf(call.invocation));
  const auto* source = findType(call.ii, std::string(endOf(name, true)));
  if (source == nullptr || source->dataType() != type) return false;
  call.resultType = endOf(name, false);
  return true;
}

bool checkGeneric(CheckCall call) {
  const std::string name = stringToUpper(writtenName(call.invocation));
  ASTNode* argument = listOf(call.invocation)->leaf(0);
  if (typeOf(call, argument, scopeOf(call.invocation)) == BasicDataType::None) return false;
  call.resultType = std::string_view(name).substr(name.find("TO_") + 3);
  return true;
}

bool checkTrunc(CheckCall call) {
  const std::string name = stringToUpper(writtenName(call.invocation));
  ASTNode* argument = listOf(call.invocation)->leaf(0);
  const std::string scope = scopeOf(call.invocation);
  const BasicDataType type = typeOf(call, argument, scope);
  if (!AstNodeHelper::isIntegerType(type) && !AstNodeHelper::isFloatType(type)) return false;
  if (compare(call, BasicDataType::LReal, type, nullptr, scope) < 0) return false;
  call.resultType = AstNodeHelper::basicDataTypeText(BasicDataType::DInt);
  return true;
}

bool checkFromString(CheckCall call) {
  ASTNode* list = countedList(call);
  const std::string name = stringToUpper(writtenName(call.invocation));
  call.resultType = endOf(name, false);
  return typeOf(call, list->leaf(0), scopeOf(call.invocation)) == BasicDataType::String;
}

bool checkToString(CheckCall call) {
  const std::string name = stringToUpper(writtenName(call.invocation));
  if (inputsOf(call.ii, name) != 1) return false;
  ASTNode* argument = listOf(call.invocation)->leaf(0);
  const BasicDataType type = typeOf(call, argument, scopeOf(call.invocation));
  const auto* source = findType(call.ii, std::string(endOf(name, true)));
  if (source->dataType() != type) return false;
  call.resultType = endOf(name, false);
  return true;
}

bool checkFromBcd(CheckCall call) {
  ASTNode* list = countedList(call);
  const std::string name = stringToUpper(writtenName(call.invocation));
  const std::string_view target = endOf(name, false);
  const BasicDataType type = typeOf(call, list->leaf(0), scopeOf(call.invocation));
  call.resultType = target;
  return target == "INT" && type == BasicDataType::USInt;
}

bool checkLimit(CheckCall call) {
  ASTNode* list = listOf(call.invocation);
  const std::string scope = scopeOf(call.invocation);
  const BasicDataType input = typeOf(call, list->leaf(1), scope);
  call.resultType = AstNodeHelper::basicDataTypeText(input);
  const BasicDataType minimum = typeOf(call, list->leaf(0), scope);
  const BasicDataType maximum = typeOf(call, list->leaf(2), scope);
  if (AstNodeHelper::isFloatType(minimum) || AstNodeHelper::isFloatType(maximum)) return false;
  const std::string target = AstNodeHelper::basicDataTypeText(input);
  for (const BasicDataType type : {minimum, input, maximum}) {
    const std::string text = AstNodeHelper::basicDataTypeText(type);
    if (compare(call, input, type, text.c_str(), scope) < 0) return false;
  }
  return true;
}

bool checkMax(CheckCall call) {
  ASTNode* list = listOf(call.invocation);
  const std::string scope = scopeOf(call.invocation);
  const DataTypeInfo a = AstNodeHelper::dataType(call.ii, list->leaf(0), scope, call.messages);
  const DataTypeInfo b = AstNodeHelper::dataType(call.ii, list->leaf(1), scope, call.messages);
  AstNodeHelper::getBasicDataTypeSize(call.ii, a.type);
  AstNodeHelper::getBasicDataTypeSize(call.ii, b.type);
  ASTNode* target = targetOf(call.invocation);
  const DataTypeInfo wanted = AstNodeHelper::dataType(call.ii, target, scope, call.messages);
  if (a.type != b.type) return false;
  call.resultType = AstNodeHelper::basicDataTypeText(wanted.type);
  const std::string targetText = AstNodeHelper::astText(target);
  const std::string sourceText = AstNodeHelper::astText(list->leaf(0));
  return compare(call, wanted.type, a.type, sourceText.c_str(), scope) >= 0;
}

bool checkSelect(CheckCall call) {
  ASTNode* list = listOf(call.invocation);
  const std::string scope = scopeOf(call.invocation);
  auto* condition = dynamic_cast<Expression*>(list->leaf(0));
  if (condition->op() == Expression::Constant) return false;
  if (typeOf(call, condition, scope) != BasicDataType::Bool) return false;
  auto* first = dynamic_cast<Expression*>(list->leaf(1));
  if (first->op() != Expression::Variable) return false;
  call.resultType = AstNodeHelper::dataType(call.ii, first, scope, call.messages).name;
  return true;
}

bool checkShift(CheckCall call) {
  ASTNode* list = listOf(call.invocation);
  return movedType(call, list, scopeOf(call.invocation)) != BasicDataType::None;
}

bool checkMux(CheckCall call) {
  ASTNode* list = listOf(call.invocation);
  const std::string scope = scopeOf(call.invocation);
  if (!AstNodeHelper::isIntegerType(typeOf(call, list->leaf(0), scope))) return false;
  const int count = list->leavesCount();
  BasicDataType result = BasicDataType::None;
  for (int i = 1; i < count; ++i) {
    result = std::max(result, typeOf(call, list->leaf(i), scope));
  }
  static_cast<void>(dynamic_cast<Expression*>(call.invocation));
  dynamic_cast<Invocation*>(call.invocation)->setBasicType(result);
  call.resultType = AstNodeHelper::basicDataTypeText(result);
  for (int i = 1; i < count; ++i) {
    const BasicDataType type = typeOf(call, list->leaf(i), scope);
    dynamic_cast<Expression*>(list->leaf(i))->setBasicType(type);
    const std::string text = AstNodeHelper::basicDataTypeText(type);
    if (compare(call, result, type, text.c_str(), scope) < 0) return false;
  }
  return true;
}

bool checkRotate(CheckCall call) {
  ASTNode* list = listOf(call.invocation);
  const std::string scope = scopeOf(call.invocation);
  const BasicDataType rotated = movedType(call, list, scope);
  if (rotated == BasicDataType::None) return false;
  const BasicDataType target = typeOf(call, targetOf(call.invocation), scope);
  const std::string targetText = AstNodeHelper::basicDataTypeText(target);
  const std::string text = AstNodeHelper::astText(list->leaf(0));
  return compare(call, target, rotated, text.c_str(), scope) >= 0;
}

bool checkEdge(CheckCall call) {
  ASTNode* list = listOf(call.invocation);
  if (typeOf(call, list->leaf(0), scopeOf(call.invocation)) != BasicDataType::Bool) return false;
  call.resultType = "BOOL";
  return true;
}

bool checkMove(CheckCall call) {
  call.ii->symbolManager();
  ASTNode* list = listOf(call.invocation);
  const std::string scope = scopeOf(call.invocation);
  const BasicDataType type = typeOf(call, list->leaf(0), scope);
  call.resultType = AstNodeHelper::basicDataTypeText(type);
  const BasicDataType target = typeOf(call, targetOf(call.invocation), scope);
  const std::string targetText = AstNodeHelper::basicDataTypeText(target);
  return compare(call, target, type, call.resultType.c_str(), scope) >= 0;
}

bool checkNumeric(CheckCall call) {
  ASTNode* list = countedList(call);
  const std::string scope = scopeOf(call.invocation);
  const std::string name = writtenName(call.invocation);
  const BasicDataType type = typeOf(call, list->leaf(0), scope);
  const std::string text = AstNodeHelper::basicDataTypeText(type);
  if (!AstNodeHelper::isIntegerType(type) && !AstNodeHelper::isFloatType(type)) return false;
  if (name == "ABS") return false;
  call.resultType = AstNodeHelper::basicDataTypeText(BasicDataType::Real);
  return compare(call, BasicDataType::Real, type, text.c_str(), scope) >= 0;
}

bool checkSizeof(CheckCall call) {
  call.ii->symbolManager();
  ASTNode* operand = listOf(call.invocation)->leaf(0);
  call.resultType = "UDINT";
  if (AstNodeHelper::isConstant(operand)) return true;
  const std::string text = AstNodeHelper::astText(operand);
  vel::HeapAddress address;
  if (parseAddress(call, text, address)) return true;
  const std::string scope = scopeOf(call.invocation);
  const Symbol* symbol = call.ii->symbolManager()->symbol(text.c_str(), scope.c_str(), Symbol::All);
  return symbol->symbolType() == Symbol::Variable;
}

bool checkAdr(CheckCall call) {
  const auto* operand = dynamic_cast<const Expression*>(listOf(call.invocation)->leaf(0));
  if (operand->bitAccessOffset() >= 0 || operand->op() != Expression::Variable) return false;
  call.resultType = "UDINT";
  return true;
}

bool checkReadBit(CheckCall call) {
  const std::string name = writtenName(call.invocation);
  if (name != "IRDBIT") return false;
  call.resultType = "INVALID";
  ASTNode* list = listOf(call.invocation);
  if (!call.ii->projectSettings()->localIoAddress.empty()) return false;

  vel::HeapAddress address;
  const std::string bit = AstNodeHelper::astText(list->leaf(0));
  if (!parseAddress(call, bit, address)) return false;
  if (call.ii->addressNotation() != 0 || !isKind(bit, "IX")) return false;

  const std::string scope = scopeOf(call.invocation);
  const auto* destination = dynamic_cast<const Expression*>(list->leaf(1));
  const std::string text = AstNodeHelper::astText(list->leaf(1));
  if (destination->op() != Expression::Variable) return false;
  if (!AstNodeHelper::checkAstWritable(call.ii, call.invocation, text, scope, call.messages, false,
                                       false)) {
    return false;
  }
  const std::string again = AstNodeHelper::astText(list->leaf(1));
  if (parseAddress(call, again, address)) {
    if (call.ii->addressNotation() != 0 || isKind(again, "IX")) return false;
  }
  return typeOf(call, list->leaf(1), scope) == BasicDataType::Bool;
}

bool checkZone(CheckCall call) {
  ASTNode* list = listOf(call.invocation);
  const std::string name = writtenName(call.invocation);
  if (name != "ZSET" || call.ii->addressNotation() != 0) return false;
  vel::HeapAddress bounds[2];
  for (int i = 0; i < 2; ++i) {
    const std::string text = AstNodeHelper::astText(list->leaf(i));
    if (!parseAddress(call, text, bounds[i])) return false;
    const vel::JapanComponent parts = call.ii->deviceMemory()->parseComponent(text);
    if (!isKind(text, "Q") || !bounds[i].isBitMode()) return false;
  }
  return call.ii->deviceMemory()->HeapAddress2HeapRawAddr(bounds[0]).address <=
         call.ii->deviceMemory()->HeapAddress2HeapRawAddr(bounds[1]).address;
}

bool checkGetBit(CheckCall call) {
  const std::string name = writtenName(call.invocation);
  if (name == "SETBITOFPARAM") return false;
  ASTNode* list = listOf(call.invocation);
  const std::string scope = scopeOf(call.invocation);
  const std::string parameter = stringToUpper(AstNodeHelper::astText(list->leaf(0)));
  const auto* unit = dynamic_cast<const vel::SymbolPOU*>(
      call.ii->symbolManager()->symbol(scope.c_str(), "", Symbol::Pou));
  if (unit->param(parameter)->varKind() != vel::SymbolVar::kBitParameter) return false;
  return AstNodeHelper::isIntegerType(typeOf(call, list->leaf(1), scope));
}

}  // namespace floors
