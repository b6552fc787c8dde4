#include "cli/explanations.h"

#include <algorithm>
#include <cstddef>

#include "core/case_folding.h"

namespace velc {

namespace {

struct Topic {
  std::string_view name;
  std::size_t text;
};

// kTexts and kTopics, made from the pages.
#include "explanations.inc"

}  // namespace

const Explanation* explanationOf(std::string_view topic) {
  const auto* const found = std::find_if(
      std::begin(kTopics), std::end(kTopics),
      [topic](const Topic& candidate) { return vel::equalIgnoringCase(candidate.name, topic); });
  return found == std::end(kTopics) ? nullptr : &kTexts[found->text];
}

}  // namespace velc
