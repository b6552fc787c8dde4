// Reading an invocation's nodes and the names around it. Every operation accepts
// what a faulty program can leave in the tree: missing nodes and wrong kinds.
#pragma once

#include <string>

#include "host/ast.h"
#include "host/declaration.h"
#include "host/symbol.h"

namespace vel {

class InternalInterface;

// Leaf `i` of `node`, null when either is missing.
ASTNode* leafOf(const ASTNode* node, int i);
// The start of the file when `node` is missing.
TextLocation positionOf(const ASTNode* node);

// The source text of the operator's name as written; for checks.
std::string operatorText(const ASTNode* invocation);
// The token of the operator's name as written, null when it is missing; for
// generation.
const char* nameToken(const ASTNode* invocation);

// The parameter list of an invocation to generate; null when the list or one of its
// parameters is missing.
ASTNode* argumentList(const ASTNode* invocation);
// Every leaf of `list` is there.
bool isComplete(const ASTNode& list);

// `invocation` is the right side of an assignment, whose target is the first leaf of
// the parent: a parent with several leaves is taken for an assignment.
bool isAssigned(const ASTNode& invocation);

// The program unit around `invocation`, null when there is none.
const POUDeclaration* enclosingPou(ASTNode* invocation);
// What it keeps between scans is in device memory.
bool isKeptInDeviceMemory(const POUDeclaration& unit);
// The name of the program unit around `invocation`, empty when there is none.
std::string enclosingPouName(ASTNode* invocation);
// The same, or `fallback` when it is empty: the scope of all type queries of a check.
std::string effectivePouName(ASTNode* invocation, const std::string& fallback);

// The type recorded on an expression or invocation, `otherwise` on any other node.
BasicDataType recordedType(const ASTNode* node, BasicDataType otherwise);

// The data type of that name, null when there is none.
SymbolDataType* findDataType(InternalInterface* ii, const char* name);

}  // namespace vel
