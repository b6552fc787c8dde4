#include "lsp/links.h"

#include <algorithm>

#include "cli/explanations.h"
#include "hostkit/folding.h"

namespace lsp {

namespace {

constexpr std::string_view kFence = "```";

// `](../messages/operators.md#0xc0197-loss-of-information)` is about 0xC0197.
std::string addressOf(std::string_view target) {
  if (target.substr(0, 4) == "http") return std::string(target);
  constexpr std::string_view kCode = "#0x";
  constexpr std::size_t kDigits = 5;
  const std::size_t code = target.find(kCode);
  if (code == std::string::npos) return {};
  std::string topic = "0x";
  for (const char c : target.substr(code + kCode.size(), kDigits)) topic += hostkit::toUpper(c);
  return velc::explanationUri(topic);
}

}  // namespace

std::string withoutRelativeLinks(std::string_view page) {
  std::string result;
  const auto take = [&](std::size_t size) {
    result += page.substr(0, size);
    page.remove_prefix(std::min(size, page.size()));
  };
  while (!page.empty()) {
    const std::size_t special = page.find_first_of("`[");
    take(std::min(special, page.size()));
    if (page.empty()) break;
    if (page[0] == '`') {
      const std::size_t size = page.substr(0, kFence.size()) == kFence ? kFence.size() : 1;
      const std::size_t end = page.find(page.substr(0, size), size);
      take(end == std::string::npos ? page.size() : end + size);
      continue;
    }
    const std::size_t middle = page.find("](");
    const std::size_t close = page.find(')', middle == std::string::npos ? page.size() : middle);
    const bool link =
        close != std::string::npos && page.substr(0, middle).find(']') == std::string::npos;
    if (!link) {
      take(1);
      continue;
    }
    const std::string_view text = page.substr(1, middle - 1);
    const std::string address = addressOf(page.substr(middle + 2, close - middle - 2));
    if (address.empty()) {
      result += text;
    } else {
      result.append("[").append(text).append("](").append(address).append(")");
    }
    page.remove_prefix(close + 1);
  }
  return result;
}

}  // namespace lsp
