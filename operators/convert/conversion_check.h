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

// STRING or WSTRING.
bool isText(BasicDataType type);

// The check of one invocation. Messages are placed at the invocation and call the
// operator by its name in capitals.
class ConversionCheck {
 public:
  // What a conversion takes. Those from and to strings call a missing list "not
  // allowed", all others "abnormal".
  static constexpr InvocationShape kStringShape{1, 1, InvocationShape::NameForm::UpperCase,
                                                InvocationShape::ListFault::NotAllowed};
  static constexpr InvocationShape kShape{1, 1, InvocationShape::NameForm::UpperCase,
                                          InvocationShape::ListFault::Abnormal};

  // `invocation` is not empty.
  ConversionCheck(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages);
  ConversionCheck(const ConversionCheck&) = delete;
  ConversionCheck& operator=(const ConversionCheck&) = delete;

  // The operator's name in capitals.
  const std::string& name() const { return name_; }

  // The invocation has `shape`, which is one of a single argument. What follows
  // needs that.
  bool hasArgument(const InvocationShape& shape, const std::string& pouName);

  BasicDataType argumentType() const { return argumentType_; }
  std::string argumentText() const;
  // No conversion is needed.
  bool argumentIs(BasicDataType type) const;
  // The host converts the argument to `target`, perhaps with a loss to warn of.
  bool argumentConverts(BasicDataType target);

  // Refusals of the argument's type; both return false. `what` is what the message
  // says was passed.
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
