// Checks that operators share. All append their messages and leave what is already
// in the list alone.
#pragma once

#include <limits>
#include <string>
#include <vector>

#include "host/ast.h"
#include "host/basic_data_type.h"
#include "host/message.h"

namespace vel {

class InternalInterface;

// The shape that an operator wants its invocations to have, and how it speaks of one
// that has another.
struct InvocationShape {
  enum class NameForm { AsWritten, UpperCase };
  enum class ListFault { NotAllowed, Abnormal, None };  // None: a node of any kind will do
  enum class Leaves { NameAndMore, NameAndList };
  static constexpr int kNoLimit = std::numeric_limits<int>::max();

  int least;  // number of parameters
  int most;
  NameForm nameForm = NameForm::AsWritten;
  ListFault listFault = ListFault::NotAllowed;  // where a parameter list should stand
  Leaves leaves = Leaves::NameAndMore;          // of the invocation itself
};

// The parameter list of an invocation of the wanted shape. Null for any other, with
// a message unless there is no invocation or nothing in it (which is a fault like any
// other where name and list are all that may be in it). A parameter that is missing in
// the tree makes the number of parameters wrong.
ASTNode* checkShape(InternalInterface* ii, ASTNode* invocation, const InvocationShape& shape,
                    std::vector<VELMessage>& messages);

// The invocation has as many parameters as the host declares inputs for the operator.
bool checkParams(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages);

// The number of inputs that the host declares for a program unit, for a function its
// in-outs too; 0 for an unknown name.
int countInputs(InternalInterface* ii, const std::string& operatorName);

// The name by which messages call the type of what `typeText` names: a bit string's
// own name, the elementary type's name for all else.
std::string resolveTypeText(InternalInterface* ii, const std::string& scope, BasicDataType type,
                            const std::string& typeText);

// A value of `sourceType` may stand where `target` is wanted. Messages are placed at
// `source`. The texts name what has the types: variables, literals or types.
bool checkAssignType(InternalInterface* ii, ASTNode* source, const std::string& targetText,
                     BasicDataType target, const std::string& sourceText, BasicDataType sourceType,
                     const std::string& scope, std::vector<VELMessage>& messages);

}  // namespace vel
