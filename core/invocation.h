// Reading an invocation's nodes and the names around it. Every operation accepts
// what a faulty program can leave in the tree: missing nodes and wrong kinds.
#pragma once

#include <limits>
#include <optional>
#include <string>

#include "host/ast.h"
#include "host/declaration.h"
#include "host/symbol.h"

namespace vel {

class InternalInterface;

// There is no invocation, or nothing in it: a check refuses such without a message, before
// it asks the host anything.
bool isEmpty(const ASTNode* invocation);

// Leaf `i` of `node`, null when either is missing.
ASTNode* leafOf(const ASTNode* node, int i);
// The source text of `node`, empty when it is missing.
std::string textOf(ASTNode* node);
// The start of the file when `node` is missing.
TextLocation positionOf(const ASTNode* node);

// The source text of the operator's name as written; for checks.
std::string operatorText(const ASTNode* invocation);
// The token of the operator's name as written, nothing when it is missing; for
// generation.
std::optional<std::string> nameToken(const ASTNode* invocation);

// `invocation` has a parameter list.
bool hasParameterList(const ASTNode& invocation);
// The parameter list of an invocation to generate; null when the list or one of its
// first `touched` parameters is missing.
constexpr int kEveryParameter = std::numeric_limits<int>::max();
ASTNode* argumentList(const ASTNode* invocation, int touched = kEveryParameter);
// The first `count` leaves of `list` are there, as far as it has so many.
bool hasLeaves(const ASTNode& list, int count);

// `invocation` is the right side of an assignment, whose target is the first leaf of
// the parent: a parent with several leaves is taken for an assignment.
bool isAssigned(const ASTNode& invocation);

// The program unit around `invocation`, null when there is none.
const POUDeclaration* enclosingPou(ASTNode* invocation);
// The name of `unit`; empty when either is missing.
std::string nameOf(const POUDeclaration* unit);
// What it keeps between scans is in device memory.
bool isKeptInDeviceMemory(const POUDeclaration& unit);
// The name of the program unit around `invocation`, empty when there is none.
std::string enclosingPouName(ASTNode* invocation);
// The same, or `fallback` when it is empty: the scope of the type queries of most checks.
std::string effectivePouName(ASTNode* invocation, const std::string& fallback);

// The type recorded on an expression or invocation, `otherwise` on any other node.
BasicDataType recordedType(const ASTNode* node, BasicDataType otherwise);

// The data type of that name, null when there is none.
SymbolDataType* findDataType(InternalInterface* ii, const char* name);

}  // namespace vel
