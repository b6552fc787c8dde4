#include "cli/explanations.h"

#include <algorithm>
#include <iterator>

#include "cli/paths.h"
#include "cli/uri.h"
#include "core/case_folding.h"

namespace velc {

namespace {

// Defines kTexts and kTopics. The build generates it from the pages.
#include "explanations.inc"

}  // namespace

std::vector<const Explanation*> explanationsOf(std::string_view topic) {
  std::vector<const Explanation*> found;
  for (const Topic& candidate : kTopics) {
    if (vel::equalIgnoringCase(candidate.name, topic)) found.push_back(candidate.explanation);
  }
  return found;
}

std::string explanationUri(std::string_view topic) {
  if (explanationsOf(topic).empty()) return {};
  const std::string page = messagesPage();
  return page.empty() ? page : fileUri(page) + '#' + std::string(topic);
}

std::vector<Topic> topicsOf(Explanation::Kind kind) {
  std::vector<Topic> topics;
  std::copy_if(std::begin(kTopics), std::end(kTopics), std::back_inserter(topics),
               [kind](const Topic& topic) { return topic.explanation->kind == kind; });
  return topics;
}

}  // namespace velc
