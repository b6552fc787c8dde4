#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "cli/commands.h"
#include "cli/explanations.h"
#include "cli/failure.h"
#include "cli/pager.h"
#include "cli/translation.h"
#include "core/add_on_api.h"
#include "core/op_manager_api.h"
#include "refhost/spelling.h"

namespace velc {

namespace {

// The number of a message code of add-ons such as `0xA0001`; 0 for anything else.
unsigned int addOnCode(const std::string& topic) {
  char* end = nullptr;
  const unsigned long code = std::strtoul(topic.c_str(), &end, 16);
  const bool spelt =
      topic.size() == 7 && topic[0] == '0' && (topic[1] == 'x' || topic[1] == 'X') && *end == '\0';
  const bool free = code >= vel::kFirstAddOnCode && code <= vel::kLastAddOnCode;
  return spelt && free ? static_cast<unsigned int>(code) : 0;
}

using TopicKind = Explanation::Kind;
constexpr TopicKind kKinds[] = {TopicKind::Operator, TopicKind::Word, TopicKind::Message,
                                TopicKind::WarningGroup};

// Pages of operators and messages that velc itself does not have.
class AddOnPages {
 public:
  // Loads the libraries that the options name; throws Failure for one that cannot be loaded.
  explicit AddOnPages(const CommonOptions& common)
      : session_(common.plugins.empty() ? nullptr : startSession(common)) {}

  std::string of(const std::string& topic) {
    if (const unsigned int code = addOnCode(topic)) {
      return fmt::format(
          "## 0x{:X} A message of an add-on\n\n"
          "The codes from 0x{:X} to 0x{:X} are those of add-ons, libraries with operators of their "
          "own. The\npage of the operator that raised it tells what it means:\n"
          "`velc explain OPERATOR --plugin PLUGIN --plugin ADD-ON`.\n",
          code, vel::kFirstAddOnCode, vel::kLastAddOnCode);
    }
    if (session_ == nullptr) unknown(topic);
    if (session_->operators().findOperator(topic) == nullptr) unknown(topic);
    std::string page = session_->operatorPage(topic);
    if (page.empty()) throw Failure(fmt::format("there is no page of the operator '{}'", topic));
    return page;
  }

 private:
  [[noreturn]] static void unknown(const std::string& topic) {
    refhost::Spelling spelling(topic);
    for (const auto kind : kKinds) {
      for (const Topic& known : topicsOf(kind)) spelling.offer(known.name);
    }
    const std::string& nearest = spelling.best();
    throw Failure(
        fmt::format("'{}' is neither a word of the language nor an operator, a message or a group "
                    "of warnings{}",
                    topic, nearest.empty() ? "" : fmt::format(", did you mean '{}'?", nearest)));
  }

  std::unique_ptr<refhost::Session> session_;
};

using Topics = std::vector<std::string>;

// All topics but operators, which `velc operators` lists.
std::string listing() {
  std::string text;
  for (const TopicKind kind : kKinds) {
    if (kind == TopicKind::Operator) continue;
    for (const Topic& topic : topicsOf(kind)) {
      text += fmt::format("{} {}\n", topic.name, topic.explanation->title);
    }
  }
  return text;
}

bool isHeading(std::string_view line) {
  const std::size_t marks = line.find_first_not_of('#');
  return marks != 0 && marks != std::string_view::npos && line[marks] == ' ';
}

// Makes the headings of a page stand out.
std::string coloured(std::string_view page, const Colours& colours) {
  if (!colours.on()) return std::string(page);
  std::string text;
  while (!page.empty()) {
    const std::string_view line = page.substr(0, page.find('\n'));
    text += colours(isHeading(line) ? Colours::Role::Strong : Colours::Role::None, line);
    text += page.substr(line.size(), 1);
    page.remove_prefix(std::min(line.size() + 1, page.size()));
  }
  return text;
}

// The topics are message codes and names; without one, lists them.
int explain(const CommonOptions& common, const Topics& topics) {
  const Colours colours(common.colour, STDOUT_FILENO);
  AddOnPages addOns(common);
  std::string text = topics.empty() ? listing() : "";
  for (const std::string& topic : topics) {
    const auto explanations = explanationsOf(topic);
    if (!text.empty()) text += '\n';
    if (explanations.empty()) text += coloured(addOns.of(topic), colours);
    const char* separator = "";
    for (const Explanation* explanation : explanations) {
      text += separator + coloured(explanation->text, colours);
      separator = "\n";
    }
  }
  writePaged(text);
  return kSuccess;
}

}  // namespace

void addExplainCommand(CommandLine& line) {
  Command command =
      line.addPluginCommand("explain", "Tell what words and operators do and what messages mean");
  const auto topics = std::make_shared<Topics>();
  command.option("TOPIC", *topics,
                 "A keyword, type, standard function or function block, an operator, the code "
                 "of a message (0xC0032) or a group of warnings; without one, they are listed");
  line.setAction(command, topics, explain);
}

}  // namespace velc
