// Checks that operators share. All append their messages and leave what is already
// in the list alone.
#pragma once

#include <string>
#include <vector>

#include "core/invocation.h"
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
  // Number of leading parameters that the operator looks at; the tree may lack the others.
  int touched = kEveryParameter;

  // The same shape for an operator that looks at so many.
  constexpr InvocationShape touching(int count) const {
    InvocationShape shape = *this;
    shape.touched = count;
    return shape;
  }
};

// The parameter list of an invocation of the wanted shape, null for any other:
// - without a message where there is no invocation, or nothing in it (unless the shape is
//   NameAndList, for which that is a fault like any other);
// - with `listFault` where something else stands in the list's place;
// - with the message on the number of parameters where there is no list, or one of another
//   length, or one that lacks a parameter which the operator looks at.
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
