#include "hostkit/operator_calls.h"

#include <algorithm>
#include <utility>

#include "core/messages.h"
#include "core/op_manager_api.h"
#include "core/operator.h"
#include "hostkit/elementary_types.h"
#include "hostkit/guarded.h"
#include "hostkit/messages.h"

namespace hostkit {
namespace {

// The kit's own messages have no code.
constexpr vel::MessageFormat kNoOperator{0, vel::Severity::Error, "There is no operator '%s';"};
constexpr vel::MessageFormat kNotAccepted{0, vel::Severity::Error,
                                          "The call of '%s' is not accepted;"};
constexpr vel::MessageFormat kNothingGenerated{
    0, vel::Severity::Error, "The operator '%s' generates nothing for this call;"};
// For an add-on whose operator throws. Operators of the plugin never do.
constexpr vel::MessageFormat kFailed{0, vel::Severity::Error, "Operator '%s' failed: %s;"};

// Calls `enter`, which calls the operator `name`, and returns its result. Reports an exception as
// a message.
template <typename Enter>
auto guardedCall(Services& services, const std::string& name, vel::TextLocation where,
                 std::vector<vel::VELMessage>& messages, const Enter& enter) {
  return guarded(enter, [&](const std::string& reason) {
    report(&services, messages, kFailed, where, name, reason);
  });
}

void addOnce(std::vector<std::string>& texts, std::string text) {
  if (text.empty() || std::find(texts.begin(), texts.end(), text) != texts.end()) return;
  texts.push_back(std::move(text));
}

}  // namespace

std::optional<DataTypeInfo> checkCall(Services& services, Invocation& invocation,
                                      const std::string& unit,
                                      std::vector<vel::VELMessage>& messages) {
  const auto refuse = [&](const vel::MessageFormat& why, const std::string& name) {
    report(&services, messages, why, invocation.pos(), name);
    return std::nullopt;
  };
  const std::string name = AstNodeHelper::astText(invocation.leaf(0));
  vel::STOperator* const op = services.operators->findOperator(name);
  if (op == nullptr) return refuse(kNoOperator, name);

  const auto before = static_cast<std::ptrdiff_t>(messages.size());
  std::string result;
  const bool accepted = guardedCall(services, name, invocation.pos(), messages, [&] {
    return op->check(&services, &invocation, messages, result, unit);
  });
  if (std::any_of(messages.begin() + before, messages.end(), isError)) return std::nullopt;
  if (!accepted) return refuse(kNotAccepted, name);
  DataTypeInfo type = typeInfo(result);
  invocation.setBasicType(type.type);
  return type;
}

std::string generateCall(Services& services, vel::Generator& generator, Invocation& invocation,
                         std::vector<vel::VELMessage>& messages) {
  const std::string name = AstNodeHelper::astText(invocation.leaf(0));
  vel::STOperator* const op = services.operators->findOperator(name);
  const std::size_t before = messages.size();
  std::string text = guardedCall(services, name, invocation.pos(), messages, [&] {
    if (op == nullptr) return std::string();
    addOnce(services.staticCode, op->staticCode(&generator));
    return op->generate(&generator, &invocation);
  });
  const bool isExplained = messages.size() != before;
  if (text.empty() && !isExplained) {
    report(&services, messages, kNothingGenerated, invocation.pos(), name);
  }
  return text;
}

}  // namespace hostkit
