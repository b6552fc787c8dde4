// Any text as a source file: parsed, checked and, when it has no errors, translated.
#include <cstdlib>

#include "refhost/session.h"

namespace {

std::unique_ptr<refhost::Session> started() {
  refhost::Options options;
  options.pluginPath = VELOPS_PLUGIN;
  options.localIo = "I:0-16;Q:0-16;";
  auto session = std::make_unique<refhost::Session>(options);
  std::string error;
  if (!session->start(error)) std::abort();
  return session;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  // Loads the plugin once; that the fuzzer counts coverage in its memory asks for that, too.
  static const std::unique_ptr<refhost::Session> session = started();
  session->restart();
  session->sources().add("fuzz.st", std::string(reinterpret_cast<const char*>(bytes), size));
  const bool accepted = session->analyse();
  for (const vel::VELMessage& message : session->messages()) {
    if (message.text.empty()) std::abort();
    static_cast<void>(session->sources().position(message.location));
    static_cast<void>(session->sources().line(message.location));
  }
  if (accepted && session->translate().empty()) std::abort();
  return 0;
}
