#include <fmt/format.h>

#include <cstdlib>

#include "cli/commands.h"
#include "cli/explanations.h"
#include "cli/failure.h"
#include "cli/output_file.h"
#include "cli/translation.h"
#include "core/add_on_api.h"
#include "core/op_manager_api.h"

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

// Pages of operators and messages that velc itself does not have. Loads the add-ons on demand.
class AddOnPages {
 public:
  explicit AddOnPages(const CommonOptions& common) : common_(common) {}

  std::string of(const std::string& topic) {
    if (const unsigned int code = addOnCode(topic)) {
      return fmt::format(
          "## 0x{:X} A message of an add-on\n\n"
          "The codes from 0x{:X} to 0x{:X} are those of add-ons, libraries with operators of their "
          "own. The\npage of the operator that raised it tells what it means:\n"
          "`velc explain OPERATOR --plugin PLUGIN --plugin ADD-ON`.\n",
          code, vel::kFirstAddOnCode, vel::kLastAddOnCode);
    }
    if (common_.plugins.empty()) unknown(topic);
    if (session_ == nullptr) session_ = startSession(common_);
    if (session_->operators().findOperator(topic) == nullptr) unknown(topic);
    std::string page = session_->operatorPage(topic);
    if (page.empty()) throw Failure(fmt::format("there is no page of the operator '{}'", topic));
    return page;
  }

 private:
  [[noreturn]] static void unknown(const std::string& topic) {
    throw Failure(
        fmt::format("'{}' is neither an operator nor a message nor a group of warnings", topic));
  }

  const CommonOptions& common_;
  std::unique_ptr<refhost::Session> session_;
};

using Topics = std::vector<std::string>;

// The topics are message codes and operator names; without one, lists the codes. Loads libraries
// only for names that velc itself does not know.
int explain(const CommonOptions& common, const Topics& topics) {
  std::string text;
  if (topics.empty()) {
    for (const Topic& message : explainedMessages()) {
      text += fmt::format("{} {}\n", message.name, message.explanation->title);
    }
  }
  AddOnPages addOns(common);
  for (const std::string& topic : topics) {
    const Explanation* const explanation = explanationOf(topic);
    if (!text.empty()) text += '\n';
    text += explanation != nullptr ? std::string(explanation->text) : addOns.of(topic);
  }
  writeStandardOutput(text);
  return kSuccess;
}

}  // namespace

void addExplainCommand(CommandLine& line) {
  CLI::App& command =
      line.addPluginCommand("explain", "Tell what messages mean and what operators do");
  const auto topics = std::make_shared<Topics>();
  command.add_option("TOPIC", *topics,
                     "Code of a message (0xC0032) or name of an operator; without one, the codes "
                     "are listed");
  line.setAction(command, topics, explain);
}

}  // namespace velc
