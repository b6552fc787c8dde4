// Reads the nodes of an invocation and finds the unit that contains it. All functions tolerate
// the tree of a faulty program, in which nodes are missing or of an unexpected kind.
#pragma once

#include <limits>
#include <optional>
#include <string>

#include "host/ast.h"
#include "host/declaration.h"
#include "host/symbol.h"

namespace vel {

class InternalInterface;

// True when `invocation` is null or has no leaves. A check refuses such an invocation without
// a message and without any request to the host.
bool isEmpty(const ASTNode* invocation);

// Leaf `i` of `node`; null when `node` is null or has no such leaf.
ASTNode* leafOf(const ASTNode* node, int i);
// The source text of `node`; empty for null.
std::string textOf(ASTNode* node);
// The position of `node`; the start of the file for null.
TextLocation positionOf(const ASTNode* node);

// The operator's name as written, by its source text; for checks.
std::string operatorText(const ASTNode* invocation);
// The operator's name as written, by its token; nullopt when the token is missing. For code
// generation.
std::optional<std::string> nameToken(const ASTNode* invocation);

bool hasParameterList(const ASTNode& invocation);
// The parameter list, for code generation; null when the list or one of its first `readCount`
// parameters is missing.
constexpr int kEveryParameter = std::numeric_limits<int>::max();
ASTNode* argumentList(const ASTNode* invocation, int readCount = kEveryParameter);
// True when none of the first `count` leaves of `list` is null. The list may be shorter.
bool hasLeaves(const ASTNode& list, int count);

// True when `invocation` is the right-hand side of an assignment, whose target is then the first
// leaf of the parent. Every parent with several leaves is taken for an assignment.
bool isAssigned(const ASTNode& invocation);

// The program unit that contains `invocation`; null when there is none.
const POUDeclaration* enclosingPou(ASTNode* invocation);
// The name of `unit`; empty for null and for a unit without a name.
std::string nameOf(const POUDeclaration* unit);
// True when the unit keeps the state of its edge operators in device memory.
bool isKeptInDeviceMemory(const POUDeclaration& unit);
// The name of the program unit that contains `invocation`; empty when there is none.
std::string enclosingPouName(ASTNode* invocation);
// The same, or `fallback` when that is empty. Most checks query types in this scope.
std::string effectivePouName(ASTNode* invocation, const std::string& fallback);

// The type recorded on an expression or invocation; `otherwise` for any other node.
BasicDataType recordedType(const ASTNode* node, BasicDataType otherwise);

// Looks a data type up by its name; null when there is none.
SymbolDataType* findDataType(InternalInterface* ii, const char* name);

}  // namespace vel
