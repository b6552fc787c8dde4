// Parameters that must be integers.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/ast.h"
#include "host/basic_data_type.h"
#include "host/message.h"

namespace vel {

class InternalInterface;
struct MessageFormat;

// The type of `parameter` when it is an integer; else raises `fault` at `invocation`.
std::optional<BasicDataType> checkInteger(InternalInterface* ii, ASTNode* invocation,
                                          ASTNode* parameter, const MessageFormat& fault,
                                          const std::string& scope,
                                          std::vector<VELMessage>& messages);

// IN and N of a shift or rotation are integers. The result has IN's type, also when N
// is refused. Gives the type of IN.
std::optional<BasicDataType> checkMovedBits(InternalInterface* ii, ASTNode* invocation,
                                            const ASTNode& list, const MessageFormat& fault,
                                            const std::string& scope,
                                            std::vector<VELMessage>& messages,
                                            std::string& resultType);

}  // namespace vel
