// Checks for parameters that must be integers.
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

// The type of `parameter` when it is an integer; otherwise reports `fault` at `invocation`.
std::optional<BasicDataType> checkInteger(InternalInterface* ii, ASTNode* invocation,
                                          ASTNode* parameter, const MessageFormat& fault,
                                          const std::string& scope,
                                          std::vector<VELMessage>& messages);

// Checks that IN and N of a shift or rotation are integers. Returns the type of IN, which is
// also the result type; `resultType` is set even if N is refused.
std::optional<BasicDataType> checkShiftOperands(InternalInterface* ii, ASTNode* invocation,
                                                const ASTNode& list, const MessageFormat& fault,
                                                const std::string& scope,
                                                std::vector<VELMessage>& messages,
                                                std::string& resultType);

}  // namespace vel
