// What an operator's work costs at least: routines that make the same requests of the host
// in the same order, look at the same nodes, and write the same text by hand. Each knows
// its one invocation and takes it for right.
#pragma once

#include <string>
#include <vector>

#include "host/ast.h"
#include "host/generator.h"
#include "host/internal_interface.h"
#include "host/message.h"

// The parameters of STOperator::check.
struct CheckCall {
  vel::InternalInterface* ii;
  vel::ASTNode* invocation;
  std::vector<vel::VELMessage>& messages;
  std::string& resultType;
  const std::string& pouName;
};

namespace floors {

using Check = bool (*)(CheckCall call);
using Generate = std::string (*)(vel::Generator* gen, vel::ASTNode* invocation);

// `known` is the text, which all write as it is but those that depend on an option.
using StaticCode = std::string (*)(vel::Generator* gen, const std::string& known);

// How a check goes on until it sees that the number of parameters is wrong.
// Sized: the type of a size is known before the parameters are counted.
enum class Start {
  Nothing,
  Sized,
  SymbolTable,
  Name,
  UpperName,
  CountedInputs,
  UpperCountedInputs
};
bool refuseCount(CheckCall call, Start start, bool namesUpperCase);

bool checkTyped(CheckCall call);
bool checkGeneric(CheckCall call);
bool checkTrunc(CheckCall call);
bool checkFromString(CheckCall call);
bool checkToString(CheckCall call);
bool checkFromBcd(CheckCall call);
bool checkLimit(CheckCall call);
bool checkMax(CheckCall call);
bool checkSelect(CheckCall call);
bool checkShift(CheckCall call);
bool checkMux(CheckCall call);
bool checkRotate(CheckCall call);
bool checkEdge(CheckCall call);
bool checkMove(CheckCall call);
bool checkNumeric(CheckCall call);
bool checkSizeof(CheckCall call);
bool checkAdr(CheckCall call);
bool checkReadBit(CheckCall call);
bool checkZone(CheckCall call);
bool checkGetBit(CheckCall call);

std::string generateTyped(vel::Generator* gen, vel::ASTNode* invocation);
std::string generateRounded(vel::Generator* gen, vel::ASTNode* invocation);
std::string generateToBool(vel::Generator* gen, vel::ASTNode* invocation);
std::string generateGeneric(vel::Generator* gen, vel::ASTNode* invocation);
std::string generateTrunc(vel::Generator* gen, vel::ASTNode* invocation);
std::string generateCall(vel::Generator* gen, vel::ASTNode* invocation);
std::string generateToString(vel::Generator* gen, vel::ASTNode* invocation);
std::string generateShift(vel::Generator* gen, vel::ASTNode* invocation);
std::string generateMux(vel::Generator* gen, vel::ASTNode* invocation);
std::string generateRotate(vel::Generator* gen, vel::ASTNode* invocation);
std::string generateEdge(vel::Generator* gen, vel::ASTNode* invocation);
std::string generateMove(vel::Generator* gen, vel::ASTNode* invocation);
std::string generateSizeof(vel::Generator* gen, vel::ASTNode* invocation);
std::string generateAdr(vel::Generator* gen, vel::ASTNode* invocation);
std::string generateReadBit(vel::Generator* gen, vel::ASTNode* invocation);
std::string generateZone(vel::Generator* gen, vel::ASTNode* invocation);
std::string generateGetBit(vel::Generator* gen, vel::ASTNode* invocation);

std::string copyText(vel::Generator* gen, const std::string& known);
std::string namedMacroText(vel::Generator* gen, const std::string& known);
std::string refreshText(vel::Generator* gen, const std::string& known);

}  // namespace floors
