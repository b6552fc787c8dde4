// Any tree through check, generate and staticCode of every operator.
#include <cstdlib>

#include "core/op_manager_api.h"
#include "core/operator.h"
#include "fuzz/fuzz_host.h"

namespace {

struct Plugin {
  Plugin() : registry(CreateOpManager(&host)) {
    host.operators = registry.get();
    registry->operatorNames(names);
  }

  fuzz::FuzzHost host;
  std::unique_ptr<vel::OpManagerAPI> registry;
  std::vector<std::string> names;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static Plugin plugin;
  FuzzedDataProvider input(bytes, size);
  plugin.host.input = &input;
  plugin.host.drawSettings();
  const std::string& name =
      plugin.names[input.ConsumeIntegralInRange<std::size_t>(0, plugin.names.size() - 1)];
  vel::STOperator& op = *plugin.registry->findOperator(name);
  fuzz::FuzzTree tree(plugin.host);
  vel::ASTNode* const call = tree.call(name);
  fuzz::FuzzGenerator generator(plugin.host);

  std::vector<vel::VELMessage> messages;
  std::string resultType;
  op.check(&plugin.host, call, messages, resultType, plugin.host.text());
  for (const vel::VELMessage& message : messages) {
    // Every record has the agreed form.
    const bool sound = message.reserved == -1 && (message.severity == 1 || message.severity == 2) &&
                       message.code != 0 && message.extra1.empty() && message.extra2.empty();
    if (!sound) std::abort();
  }
  static_cast<void>(op.generate(&generator, call));
  static_cast<void>(op.staticCode(plugin.host.chance() ? &generator : nullptr));
  return 0;
}
