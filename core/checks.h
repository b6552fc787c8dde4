// Checks that operators share. They append messages to the list and never remove any.
#pragma once

#include <string>
#include <vector>

#include "core/invocation.h"
#include "host/basic_data_type.h"
#include "host/message.h"

namespace vel {

class InternalInterface;

// The shape that an operator requires of its invocations, and how it reports another one.
struct InvocationShape {
  enum class NameForm { AsWritten, UpperCase };
  enum class ListFault { NotAllowed, Abnormal, None };  // None: leaf 1 may be of any node kind
  enum class Leaves { NameAndMore, NameAndList };
  static constexpr int kNoLimit = std::numeric_limits<int>::max();

  int least;  // number of parameters
  int most;
  NameForm nameForm = NameForm::AsWritten;
  ListFault listFault = ListFault::NotAllowed;  // message where leaf 1 is no parameter list
  Leaves leaves = Leaves::NameAndMore;          // of the invocation itself
  // Number of leading parameters that the operator reads; the nodes of the others may be null.
  int readCount = kEveryParameter;

  // The same shape for an operator that reads only the first `count` parameters.
  constexpr InvocationShape readingFirst(int count) const {
    InvocationShape shape = *this;
    shape.readCount = count;
    return shape;
  }
};

// Returns the parameter list of an invocation that has the required shape, otherwise null:
// - without a message when the invocation is null or has no leaves (with NameAndList, an
//   invocation without leaves gets the message on the number of parameters);
// - with the message of `listFault` when leaf 1 is of another kind than a parameter list;
// - with the message on the number of parameters when there is no list, when its length is
//   not within `least` and `most`, or when one of the first `readCount` parameters is null.
ASTNode* checkShape(InternalInterface* ii, ASTNode* invocation, const InvocationShape& shape,
                    std::vector<VELMessage>& messages);

// Checks that the invocation has as many parameters as the host declares inputs of the operator.
bool checkParams(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages);

// The number of inputs that the host declares for a program unit, including the in-outs of a
// function; 0 for an unknown name.
int countInputs(InternalInterface* ii, const std::string& operatorName);

// The type name for messages about `typeText`, which is a variable or a type: the name of a
// bit-string type, which shares its number with an integer type, or else the name of `type`.
std::string resolveTypeText(InternalInterface* ii, const std::string& scope, BasicDataType type,
                            const std::string& typeText);

// Checks that a value of `sourceType` can be assigned to a variable of type `target`. Messages
// are reported at `source`. The two texts each name a variable, a literal or a type.
bool checkAssignType(InternalInterface* ii, ASTNode* source, const std::string& targetText,
                     BasicDataType target, const std::string& sourceText, BasicDataType sourceType,
                     const std::string& scope, std::vector<VELMessage>& messages);

}  // namespace vel
