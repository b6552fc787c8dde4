#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/operator_catalogue.h"
#include "cli/output_file.h"
#include "cli/translation.h"

namespace velc {

namespace {

struct OperatorsOptions {
  std::vector<std::string> names;  // empty: all
  bool detailed = false;
  bool json = false;
};

std::string asLines(const std::vector<OperatorEntry>& entries, bool detailed) {
  std::string text;
  for (const OperatorEntry& entry : entries) {
    if (!detailed) {
      text += entry.name + '\n';
      continue;
    }
    text += fmt::format("{:<18} {:<23} {:<19} {}\n", entry.name, entry.className, entry.family,
                        entry.isFunctionCall ? "yes" : "no");
  }
  return text;
}

std::string asJson(const std::vector<OperatorEntry>& entries) {
  auto array = nlohmann::ordered_json::array();
  for (const OperatorEntry& entry : entries) {
    array.push_back({{"name", entry.name},
                     {"class", entry.className},
                     {"family", entry.family},
                     {"functionCall", entry.isFunctionCall},
                     {"inputs", entry.inputs},
                     {"extensible", entry.isExtensible}});
  }
  return array.dump(2) + '\n';
}

int listOperators(const CommonOptions& common, const OperatorsOptions& options) {
  const auto session = startSession(common);
  const auto entries = operatorCatalogue(*session, options.names);
  writeStandardOutput(options.json ? asJson(entries) : asLines(entries, options.detailed));
  return kSuccess;
}

}  // namespace

void addOperatorsCommand(CommandLine& line) {
  Command command = line.addCommand("operators", "List the operators in the order of registration");
  const auto options = std::make_shared<OperatorsOptions>();
  command.option("NAME", options->names, "Only these");
  command.flag("--long", options->detailed,
               "With class, family, and whether it is a function-call operator");
  command.flag("--json", options->json, "All of that, and the names of the inputs, as JSON");
  line.setAction(command, options, listOperators);
}

}  // namespace velc
