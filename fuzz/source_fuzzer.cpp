// Any text as a source file: parsed, checked and, when it has no errors, translated.
#include <dlfcn.h>

#include <cstdlib>

#include "refhost/session.h"

// The plugin stays loaded, since the fuzzer counts coverage in its memory.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
  if (dlopen(VELOPS_PLUGIN, RTLD_NOW | RTLD_LOCAL) == nullptr) std::abort();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  refhost::Options options;
  options.pluginPath = VELOPS_PLUGIN;
  options.localIo = "I:0-16;Q:0-16;";
  refhost::Session session(options);
  std::string error;
  if (!session.start(error)) std::abort();
  session.sources().add("fuzz.st", std::string(reinterpret_cast<const char*>(bytes), size));
  const bool accepted = session.analyse();
  for (const vel::VELMessage& message : session.messages()) {
    if (message.text.empty()) std::abort();
    static_cast<void>(session.sources().position(message.location));
    static_cast<void>(session.sources().line(message.location));
  }
  if (accepted && session.translate().empty()) std::abort();
  return 0;
}
