#include <charconv>
#include <iterator>

#include "bench/operators/floor_steps.h"

namespace floors {
namespace {

void addNumber(std::string& out, std::uint32_t number) {
  char digits[10];
  out.append(digits, std::to_chars(std::begin(digits), std::end(digits), number).ptr);
}

// `(a), (b)`
void addArguments(Generator* gen, ASTNode* list, std::string& out) {
  for (int i = 0, count = list->leavesCount(); i < count; ++i) {
    out += i == 0 ? "(" : ", (";
    out += gen->expressionText(list->leaf(i));
    out += ')';
  }
}

// `NAME((a), (b)` and `end`.
std::string callText(Generator* gen, ASTNode* invocation, const char* end) {
  ASTNode* list = listOf(invocation);
  std::string out = room();
  out += stringToUpper(token(invocation));
  out += '(';
  addArguments(gen, list, out);
  out += end;
  return out;
}

// `((type)(a))` of the type that `target` names.
std::string castText(Generator* gen, ASTNode* list, vel::SymbolDataType* target) {
  std::string out = room();
  out += "((";
  out += gen->typeText(target);
  out += ')';
  addArguments(gen, list, out);
  out += ')';
  return out;
}

vel::HeapAddress addressOf(vel::InternalInterface* ii, ASTNode* parameter) {
  vel::HeapAddress address;
  ii->deviceMemory()->string2IecAddress(AstNodeHelper::astText(parameter), &address, false);
  return address;
}

std::uint32_t placeOf(vel::InternalInterface* ii, const vel::HeapAddress& address) {
  return ii->deviceMemory()->HeapAddress2HeapRawAddr(address).address;
}

}  // namespace

std::string generateTyped(Generator* gen, ASTNode* invocation) {
  const std::string name = stringToUpper(token(invocation));
  ASTNode* list = listOf(invocation);
  const std::size_t separator = name.find("_TO_");
  const auto* source = findType(gen->ii, name.substr(0, separator));
  auto* target = findType(gen->ii, name.substr(separator + 4));
  if (source->dataType() == BasicDataType::String) return {};
  if (target->dataType() == BasicDataType::String) return {};
  return castText(gen, list, target);
}

std::string generateRounded(Generator* gen, ASTNode* invocation) {
  const std::string_view name = token(invocation);
  ASTNode* list = listOf(invocation);
  auto* target = findType(gen->ii, std::string(name.substr(name.find("_TO_") + 4)));
  std::string out = room();
  out += "__real_to_integer(";
  addArguments(gen, list, out);
  out += ", ";
  out += gen->typeText(target);
  out += ')';
  return out;
}

std::string generateToBool(Generator* gen, ASTNode* invocation) {
  std::string out = room();
  out += "((";
  addArguments(gen, listOf(invocation), out);
  out += ")!=0)";
  return out;
}

std::string generateGeneric(Generator* gen, ASTNode* invocation) {
  ASTNode* list = listOf(invocation);
  const std::string name = stringToUpper(writtenName(invocation));
  const std::string targetName = name.substr(3);
  if (findType(gen->ii, targetName) == nullptr) return {};
  const BasicDataType type = typeOf(gen, invocation, list->leaf(0));
  if (AstNodeHelper::isFloatType(type)) return {};

  const std::string again = stringToUpper(token(invocation));
  const BasicDataType typeAgain = typeOf(gen, invocation, list->leaf(0));
  const auto* source = findType(gen->ii, AstNodeHelper::basicDataTypeText(typeAgain));
  auto* target = findType(gen->ii, again.substr(3));
  if (source->dataType() == BasicDataType::String) return {};
  return castText(gen, list, target);
}

std::string generateTrunc(Generator* gen, ASTNode* invocation) {
  std::string out = room();
  out += "((i32)";
  addArguments(gen, listOf(invocation), out);
  out += ')';
  return out;
}

std::string generateCall(Generator* gen, ASTNode* invocation) {
  return callText(gen, invocation, ")");
}

std::string generateToString(Generator* gen, ASTNode* invocation) {
  return callText(gen, invocation, ", _returnString)");
}

std::string generateShift(Generator* gen, ASTNode* invocation) {
  ASTNode* list = listOf(invocation);
  const std::string macro = stringToUpper(token(invocation));
  const BasicDataType type = typeOf(gen, invocation, list->leaf(0));
  std::string out = room();
  out += "((";
  out += AstNodeHelper::basicDataToCTypeText(type);
  out += ")(";
  out += macro;
  out += '(';
  addArguments(gen, list, out);
  out += ")))";
  return out;
}

std::string generateMux(Generator* gen, ASTNode* invocation) {
  const ASTNode* list = listOf(invocation);
  vel::CallTree* calls = gen->ii->callTree();
  const std::string scope = scopeOf(invocation);
  const BasicDataType type = dynamic_cast<Invocation*>(invocation)->basicType();
  calls->addOperatorCaller(scope, "MUX", invocation->pos());
  calls->addOperatorCaller(scope, "FC_MUX_INT", invocation->pos());
  const std::string cType = AstNodeHelper::basicDataToCTypeText(type);
  const int count = list->leavesCount();
  std::string out = room();
  out += "((";
  out += cType;
  out += ")FC_MUX_INT(";
  addNumber(out, static_cast<std::uint32_t>(count - 1));
  for (int i = 0; i < count; ++i) {
    out += ", ";
    if (i > 0) {
      out += '(';
      out += cType;
      out += ')';
    }
    out += gen->expressionText(list->leaf(i));
    if (dynamic_cast<Expression*>(list->leaf(i))->op() == Expression::Constant) return {};
  }
  out += "))";
  return out;
}

std::string generateRotate(Generator* gen, ASTNode* invocation) {
  const char* name = token(invocation);
  const ASTNode* list = listOf(invocation);
  if (dynamic_cast<Expression*>(list->leaf(0))->basicType() != BasicDataType::Int) return {};
  auto* type = findType(gen->ii, "int", Symbol::All);
  auto* unsignedType = findType(gen->ii, "uint", Symbol::All);
  std::string out = room();
  out += stringToUpper(name);
  out += '(';
  out += gen->expressionText(list->leaf(0));
  out += ", ";
  out += gen->expressionText(list->leaf(1));
  out += ", ";
  out += gen->typeText(type);
  out += ", ";
  out += gen->typeText(unsignedType);
  out += ')';
  return out;
}

std::string generateEdge(Generator* gen, ASTNode* invocation) {
  ASTNode* condition = listOf(invocation)->leaf(0);
  const POUDeclaration* unit = unitOf(invocation);
  const std::string state = AstNodeHelper::opExpTextToMd5HexText(writtenName(invocation),
                                                                 AstNodeHelper::astText(condition));
  const auto* variable = dynamic_cast<const vel::SymbolVar*>(
      gen->ii->symbolManager()->symbol(state.c_str(), unit->name(), Symbol::Variable));
  if (unit->kind != 1) return {};
  std::string out = room();
  out += "(_mep(";
  out += gen->expressionText(condition);
  out += ",((u8*)(_m + ";
  addNumber(out, variable->backendAddress().address);
  out += "))))";
  return out;
}

std::string generateMove(Generator* gen, ASTNode* invocation) {
  std::string out = room();
  out += '(';
  addArguments(gen, listOf(invocation), out);
  out += ')';
  return out;
}

std::string generateSizeof(Generator* gen, ASTNode* invocation) {
  const std::string scope = scopeOf(invocation);
  ASTNode* operand = listOf(invocation)->leaf(0);
  if (dynamic_cast<vel::SymbolPOU*>(
          gen->ii->symbolManager()->symbol(scope.c_str(), "", Symbol::Pou)) == nullptr ||
      AstNodeHelper::isConstant(operand)) {
    return {};
  }
  const std::string name = AstNodeHelper::astText(operand);
  Symbol* symbol = gen->ii->symbolManager()->symbol(name.c_str(), scope.c_str(), Symbol::All);
  if (symbol->symbolType() != Symbol::Variable) return {};
  const auto* variable = dynamic_cast<const vel::SymbolVar*>(symbol);
  if (dynamic_cast<const Expression*>(operand)->op() == Expression::Typed) return {};
  std::string out = room();
  out += "sizeof(";
  out += gen->typeText(variable->dataType());
  out += ')';
  return out;
}

std::string generateAdr(Generator* gen, ASTNode* invocation) {
  ASTNode* operand = listOf(invocation)->leaf(0);
  if (dynamic_cast<const Expression*>(operand)->op() == Expression::Typed) return {};
  const std::string text = AstNodeHelper::astText(operand);
  const POUDeclaration* unit = unitOf(invocation);
  const std::string scope = unit->name();
  auto* variable = dynamic_cast<vel::SymbolVar*>(
      gen->ii->symbolManager()->symbol(text.c_str(), scope.c_str(), Symbol::Variable));
  if (variable->isFixedAddress() || unit->kind != 1 || variable->backendAddress().address != 0) {
    return {};
  }
  std::string out = room();
  out += "(&";
  out += gen->variableText(variable, 16, scope);
  out += ')';
  return out;
}

std::string generateReadBit(Generator* gen, ASTNode* invocation) {
  const std::string_view name = token(invocation);
  const ASTNode* list = listOf(invocation);
  const std::uint32_t place = placeOf(gen->ii, addressOf(gen->ii, list->leaf(0)));
  const std::string value = gen->expressionText(list->leaf(1));
  if (name != "IRDBIT" || value.find("gbit") != std::string::npos) return {};
  std::string out = room();
  out += value;
  out += " = _READIDIRECT(";
  addNumber(out, place);
  out += ')';
  return out;
}

std::string generateZone(Generator* gen, ASTNode* invocation) {
  const std::string_view name = token(invocation);
  const ASTNode* list = listOf(invocation);
  const vel::HeapAddress first = addressOf(gen->ii, list->leaf(0));
  const vel::HeapAddress last = addressOf(gen->ii, list->leaf(1));
  if (name != "ZSET" || !first.isBitMode() || !last.isBitMode()) return {};
  const std::uint32_t place = placeOf(gen->ii, first);
  std::string out = room();
  out += "mset(";
  addNumber(out, place);
  out += ',';
  addNumber(out, placeOf(gen->ii, last) - place + 1);
  out += ",1,0xFF)";
  return out;
}

std::string generateGetBit(Generator* gen, ASTNode* invocation) {
  const std::string_view name = token(invocation);
  const ASTNode* list = listOf(invocation);
  if (name == "SETBITOFPARAM") return {};
  std::string out = room();
  out += "getBitOfParam(&offsetParam_";
  out += stringToUpper(AstNodeHelper::astText(list->leaf(0)));
  out += ',';
  out += gen->expressionText(list->leaf(1));
  out += ')';
  return out;
}

std::string copyText(Generator* /*gen*/, const std::string& known) { return known; }

// The name in the text is the operator's, which has three characters.
std::string namedMacroText(Generator* /*gen*/, const std::string& known) {
  constexpr std::string_view kDefine = "#define ";
  const std::string_view text = known;
  std::string out;
  out.reserve(text.size());
  out += kDefine;
  out += text.substr(kDefine.size(), 3);
  out += text.substr(kDefine.size() + 3);
  return out;
}

std::string refreshText(Generator* gen, const std::string& known) {
  // `I:0-16;Q:0-16;`
  const std::string_view ranges = gen->optionText("localio.addr");
  const std::size_t inDash = ranges.find('-');
  const std::size_t inStop = ranges.find(';', inDash);
  const std::size_t outDash = ranges.find('-', inStop);
  const std::size_t outStop = ranges.find(';', outDash);
  const std::string_view inStart = ranges.substr(2, inDash - 2);
  const std::string_view outStart = ranges.substr(inStop + 3, outDash - inStop - 3);
  std::string out;
  out.reserve(known.size());
  out += "u8 _READIDIRECT(u32 addr) {\n  if(";
  out += inStart;
  out += "<= addr && addr <";
  out += ranges.substr(inDash + 1, inStop - inDash - 1);
  out += ")\n    __platform_api.UPDATEINPUT( addr - ";
  out += inStart;
  out +=
      ", 1);\n  return gbit(addr);\n}\n"
      "void _WRITEODIRECT(u32 addr, u8 d) {\n  sbit(addr,d);\n  if(";
  out += outStart;
  out += "<= addr && addr <";
  out += ranges.substr(outDash + 1, outStop - outDash - 1);
  out += ")\n    __platform_api.UPDATEOUTPUT( addr - ";
  out += outStart;
  out += ", 1);\n}\n";
  return out;
}

}  // namespace floors
