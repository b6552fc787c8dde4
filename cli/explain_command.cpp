#include <fmt/format.h>

#include "cli/commands.h"
#include "cli/explanations.h"
#include "cli/failure.h"
#include "cli/output_file.h"

namespace velc {

int explain(const std::vector<std::string>& topics) {
  std::string text;
  if (topics.empty()) {
    for (const Topic& message : explainedMessages()) {
      text += fmt::format("{} {}\n", message.name, message.explanation->title);
    }
  }
  for (const std::string& topic : topics) {
    const Explanation* explanation = explanationOf(topic);
    if (explanation == nullptr) {
      throw Failure(fmt::format("'{}' is neither an operator nor the code of a message", topic));
    }
    if (!text.empty()) text += '\n';
    text += explanation->text;
  }
  writeStandardOutput(text);
  return kSuccess;
}

}  // namespace velc
