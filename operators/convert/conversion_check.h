// The steps that the checks of conversions share.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/checks.h"
#include "host/ast.h"
#include "host/basic_data_type.h"
#include "host/message.h"

namespace vel {

class InternalInterface;

// True for STRING and WSTRING.
bool isText(BasicDataType type);

// The check of one invocation. Messages are reported at the invocation and name the operator
// in capitals.
class ConversionCheck {
 public:
  // The shapes of a conversion's invocation. Conversions from and to strings report anything but
  // a parameter list as "not allowed", all others as "abnormal".
  static constexpr InvocationShape kStringShape{1, 1, InvocationShape::NameForm::UpperCase,
                                                InvocationShape::ListFault::NotAllowed};
  static constexpr InvocationShape kShape{1, 1, InvocationShape::NameForm::UpperCase,
                                          InvocationShape::ListFault::Abnormal};

  // `invocation` must not be empty, in the sense of isEmpty().
  ConversionCheck(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages);
  ConversionCheck(const ConversionCheck&) = delete;
  ConversionCheck& operator=(const ConversionCheck&) = delete;

  // The operator's name in capitals.
  const std::string& name() const { return name_; }

  // Checks that the invocation has `shape`, that of a single argument. All operations below
  // require that this has returned true.
  bool hasArgument(const InvocationShape& shape, const std::string& pouName);

  BasicDataType argumentType() const { return argumentType_; }
  std::string argumentText() const;
  // True when the argument has this type; false for None, which marks an unknown type.
  bool argumentIs(BasicDataType type) const;
  // True when the host can convert the argument to `target`. Warns of a loss of information.
  bool argumentConverts(BasicDataType target);

  // Report that the argument's type is not accepted; both return false. The message names `what`
  // in the place of the argument.
  bool mismatch(const std::string& what);
  bool cannotConvert(std::string_view wanted);

 private:
  InternalInterface* ii_;
  ASTNode* invocation_;
  std::vector<VELMessage>& messages_;
  std::string name_;
  std::string scope_;
  ASTNode* argument_ = nullptr;
  BasicDataType argumentType_ = BasicDataType::None;
};

}  // namespace vel
