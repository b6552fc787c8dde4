#include "cli/explanations.h"

#include <algorithm>
#include <iterator>

#include "core/case_folding.h"

namespace velc {

namespace {

// Defines kTexts and kTopics. The build generates it from the pages.
#include "explanations.inc"

}  // namespace

const Explanation* explanationOf(std::string_view topic) {
  const auto* const found = std::find_if(
      std::begin(kTopics), std::end(kTopics),
      [topic](const Topic& candidate) { return vel::equalIgnoringCase(candidate.name, topic); });
  return found == std::end(kTopics) ? nullptr : found->explanation;
}

std::vector<Topic> explainedMessages() {
  std::vector<Topic> messages;
  std::copy_if(
      std::begin(kTopics), std::end(kTopics), std::back_inserter(messages), [](const Topic& topic) {
        // Operators have names in capitals.
        return topic.name.substr(0, 2) == "0x" || (topic.name[0] >= 'a' && topic.name[0] <= 'z');
      });
  return messages;
}

}  // namespace velc
