#include "refhost/editor/callee.h"

#include <algorithm>
#include <utility>

#include "core/op_manager_api.h"
#include "core/operator.h"
#include "hostkit/elementary_types.h"
#include "hostkit/operator_inputs.h"
#include "hostkit/operator_traits.h"
#include "refhost/editor/outline.h"
#include "refhost/services/configuration.h"
#include "refhost/services/standard_functions.h"
#include "refhost/services/test_functions.h"
#include "refhost/syntax/word_tables.h"

namespace refhost {

namespace {

using CalleeToken = grammar::Parser::token;
using Passing = CalleeParameter::Passing;

CalleeAt fromUnit(const NamesAt& names, SymbolId id) {
  const Symbols& symbols = names.symbols();
  CalleeAt callee;
  callee.id = id;
  callee.name = symbols[id].name;
  for (const SymbolId part : symbols.partsOf(id)) {
    const SymbolInfo& symbol = symbols[part];
    if (!isParameter(symbol.kind)) continue;
    CalleeParameter parameter;
    parameter.name = symbol.name;
    parameter.id = part;
    parameter.passing = symbol.kind == SymbolKind::Input    ? Passing::In
                        : symbol.kind == SymbolKind::Output ? Passing::Out
                                                            : Passing::InOut;
    parameter.dataType = symbols.dataType(part);
    parameter.type = typeText(symbol);
    callee.parameters.push_back(std::move(parameter));
  }
  const ASTNode* const result = symbols[id].node->leaf(Unit::kReturnType);
  if (result != nullptr) callee.result = inOneLine(vel::TreeBuilder::source(*result));
  return callee;
}

CalleeAt fromLexical(const NamesAt& names, const LexicalUnit& unit) {
  CalleeAt callee;
  callee.name = std::string(unit.name);
  callee.result = inOneLine(unit.result);
  for (const LexicalVariable& variable : unit.variables) {
    const bool output = variable.section == CalleeToken::VAR_OUTPUT;
    const bool inOut = variable.section == CalleeToken::VAR_IN_OUT;
    if (variable.section != CalleeToken::VAR_INPUT && !output && !inOut) continue;
    const PlaceType type = names.typeNamed(variable.type);
    callee.parameters.push_back({std::string(variable.name), inOneLine(variable.type),
                                 output  ? Passing::Out
                                 : inOut ? Passing::InOut
                                         : Passing::In,
                                 type.around.empty() ? type.type : nullptr, kNoSymbol});
  }
  return callee;
}

CalleeAt ofKind(CalleeAt::Kind kind, std::string_view name) {
  CalleeAt callee;
  callee.kind = kind;
  callee.name = std::string(name);
  return callee;
}

void addInputs(CalleeAt& callee, std::initializer_list<std::string_view> inputs) {
  for (const std::string_view input : inputs) {
    callee.parameters.emplace_back().name = std::string(input);
  }
}

CalleeAt fromAssertion(const TestFunction& function) {
  CalleeAt callee = ofKind(CalleeAt::Kind::Assertion, function.name);
  callee.takesNames = callee.takesEnable = false;
  switch (function.kind) {
    case TestFunction::Kind::Comparison:
      addInputs(callee, {"a", "b"});
      break;
    case TestFunction::Kind::Condition:
      addInputs(callee, {"condition"});
      break;
    case TestFunction::Kind::Near:
      addInputs(callee, {"a", "b", "tolerance"});
      break;
    case TestFunction::Kind::Advance:
      addInputs(callee, {"time"});
      break;
  }
  if (function.asserts()) addInputs(callee, {"text"});
  return callee;
}

// The inputs of an operator or a function that may be repeated are shown as several.
CalleeAt repeated(CalleeAt callee) {
  const std::size_t count = callee.parameters.size();
  if (!callee.extensible || count == 0) return callee;
  const auto withoutDigits = [](const std::string& name) {
    return name.substr(0, name.find_last_not_of("0123456789") + 1);
  };
  const bool alone = count == 1 || withoutDigits(callee.parameters[count - 2].name) !=
                                       withoutDigits(callee.parameters[count - 1].name);
  if (alone) addInputs(callee, {callee.parameterName(count)});
  return callee;
}

std::optional<CalleeAt> fromLanguage(const NamesAt& names, std::string_view name) {
  const Services& services = names.view().program().services;
  if (const vel::STOperator* const op = services.operators != nullptr
                                            ? services.operators->findOperator(std::string(name))
                                            : nullptr) {
    CalleeAt callee = ofKind(CalleeAt::Kind::Operator, op->name);
    for (const std::string& input : hostkit::inputNames(services, op->name)) {
      addInputs(callee, {input});
    }
    callee.extensible = hostkit::operatorTraits(op->name).has(hostkit::OperatorTraits::kExtensible);
    const std::size_t to = isConversion(op->name) ? op->name.rfind("TO_") : std::string::npos;
    const std::string target = to != std::string::npos ? op->name.substr(to + 3) : std::string();
    if (hostkit::elementaryType(target) != nullptr) callee.result = target;
    return repeated(std::move(callee));
  }
  if (const TestFunction* const function = testFunction(name)) return fromAssertion(*function);
  const StandardFunction* const function = standardFunction(name);
  if (function == nullptr) return {};
  CalleeAt callee = ofKind(CalleeAt::Kind::StandardFunction, function->name);
  for (int i = 0; i < function->inputs(); ++i) {
    addInputs(callee, {function->formals[static_cast<std::size_t>(i)]});
  }
  callee.extensible = function->extensible;
  return repeated(std::move(callee));
}

CalleeAt taskAt(std::string_view name) {
  CalleeAt callee = ofKind(CalleeAt::Kind::Task, name);
  callee.takesEnable = false;
  for (const TaskProperty& property : kTaskProperties) addInputs(callee, {property.name});
  return callee;
}

}  // namespace

std::size_t CalleeAt::positional(std::size_t index, bool all) const {
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    if (!all && parameters[i].passing == Passing::Out) continue;
    if (index-- == 0) return i;
  }
  return extensible && !parameters.empty() ? parameters.size() - 1 : parameters.size();
}

std::size_t CalleeAt::named(std::string_view wanted) const {
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    if (equalIgnoringCase(parameters[i].name, wanted)) return i;
  }
  if (!extensible || parameters.empty()) return parameters.size();
  const std::string_view last = parameters.back().name;
  const std::string_view prefix = last.substr(0, last.find_last_not_of("0123456789") + 1);
  const bool further = hostkit::numberedInput(wanted, prefix) > 0;
  return parameters.size() - (further ? 1 : 0);
}

std::string CalleeAt::parameterName(std::size_t index) const {
  if (index < parameters.size()) return parameters[index].name;
  const std::string& last = parameters.back().name;
  const std::size_t digits = last.find_last_not_of("0123456789") + 1;
  return last.substr(0, digits) +
         std::to_string(last.back() - '0' + static_cast<int>(index - parameters.size()) + 1);
}

std::string signatureText(const CalleeAt& callee, bool named, std::vector<Span>* places) {
  std::string text = named ? callee.name : std::string();
  text += '(';
  for (const CalleeParameter& parameter : callee.parameters) {
    if (&parameter != callee.parameters.data()) text += ", ";
    const auto begin = static_cast<std::uint32_t>(text.size());
    text += parameter.name;
    if (parameter.passing == Passing::Out) text += " =>";
    if (!parameter.type.empty()) {
      text += (parameter.passing == Passing::Out ? " " : " : ") + parameter.type;
    }
    if (places != nullptr) places->push_back({begin, static_cast<std::uint32_t>(text.size())});
  }
  if (callee.extensible) text += ", ...";
  text += ')';
  if (!callee.result.empty()) text += " : " + callee.result;
  return text;
}

std::vector<std::string_view> givenArguments(const NamesAt& names, const CodeBracket& bracket) {
  const CursorContext& context = names.context();
  const std::uint32_t begin = context.code.tokens[bracket.token].span.end;
  std::vector<std::string_view> given;
  std::string_view last;
  bool begins = true;  // an argument
  int depth = 0;
  for (const SourceToken& token : names.tokens()) {
    const bool here = token.span.begin >= context.word.begin && token.span.end <= context.word.end;
    if (here) begins = false;
    if (token.span.begin < begin || token.token == 0 || here) continue;
    if (isStructural(token.token)) break;
    if (token.token == '(' || token.token == '[') ++depth;
    if ((token.token == ')' || token.token == ']') && --depth < 0) break;
    const bool assigns = token.token == CalleeToken::ASSIGN || token.token == CalleeToken::ARROW;
    if (depth == 0 && assigns && !last.empty()) given.push_back(last);
    last = context.code.text.substr(token.span.begin, token.span.end - token.span.begin);
    // In a call that is not finished, the statements behind it assign, too: `a.b := 1`.
    const bool name =
        token.kind == SourceToken::Kind::Name || token.kind == SourceToken::Kind::Keyword;
    if (!name || !begins) last = {};
    begins = (token.token == ',' && depth == 0) || token.token == CalleeToken::NOT;
  }
  return given;
}

bool isConversion(std::string_view operatorName) {
  using hostkit::OperatorFamily;
  const OperatorFamily family = hostkit::operatorTraits(operatorName).family;
  return family == OperatorFamily::Conversion || family == OperatorFamily::GenericConversion ||
         family == OperatorFamily::StringConversion || family == OperatorFamily::BcdConversion;
}

std::optional<CalleeAt> calleeNamed(const NamesAt& names, std::string_view name) {
  const Symbols& symbols = names.symbols();
  const SymbolId unit = symbols.ofType(name);
  const bool function = unit != kNoSymbol && symbols[unit].kind == SymbolKind::Function;
  if (function) return fromUnit(names, unit);
  if (auto callee = fromLanguage(names, name)) return callee;
  if (unit != kNoSymbol && isUnit(symbols[unit].kind)) return fromUnit(names, unit);
  const LexicalUnit* const lexical = names.lexicalUnit(name);
  return lexical != nullptr ? std::optional(fromLexical(names, *lexical)) : std::nullopt;
}

std::optional<CalleeAt> calleeOfType(const NamesAt& names, const PlaceType& type) {
  if (!type.around.empty()) return {};
  if (type.block != nullptr) {
    CalleeAt callee = fromLexical(names, *type.block);
    callee.kind = CalleeAt::Kind::Instance;
    return callee;
  }
  const auto* const instance = dynamic_cast<const InstanceType*>(type.type);
  if (instance == nullptr) return {};
  const SymbolId unit = names.symbols().ofUnit(*instance->unit->node);
  if (unit == kNoSymbol) return {};
  CalleeAt callee = fromUnit(names, unit);
  callee.kind = CalleeAt::Kind::Instance;
  return callee;
}

std::optional<CalleeAt> calleeAt(const NamesAt& names, std::size_t first, std::size_t last) {
  const OpenCode& code = names.context().code;
  if (last >= code.tokens.size()) return {};
  const std::string_view name = code.textOf(last);
  const int before = last > 0 ? code.tokens[last - 1].token : 0;
  if (before == CalleeToken::TASK) return taskAt(name);
  if (first > last) {
    // AND and the like, which are no names.
    return code.tokens[last].kind == SourceToken::Kind::Keyword ? fromLanguage(names, name)
                                                                : std::nullopt;
  }
  const bool instance = code.tokens[code.statement].token == CalleeToken::PROGRAM;
  if (before == ':' && instance) return calleeNamed(names, name);  // in a configuration
  const bool plain = first == last;
  const bool result = plain && names.unit() != kNoSymbol &&
                      equalIgnoringCase(names.symbols()[names.unit()].name, name);
  if (!result) {
    if (auto callee = calleeOfType(names, names.typeOfAccess(first, last))) return callee;
  }
  return plain ? calleeNamed(names, name) : std::nullopt;
}

}  // namespace refhost
