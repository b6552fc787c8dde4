// Any text as a source file: parsed, formatted, checked and, when it has no errors, translated.
#include <cstdlib>

#include "cli/diagnostics_printer.h"
#include "refhost/format/format.h"
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

// What is formatted is a program still, and is not changed again.
void checkFormat(const refhost::SourceManager& sources) {
  const refhost::Formatting formatting = refhost::formatSource(sources, 0);
  if (!formatting.errors.empty()) return;
  refhost::SourceManager formatted;
  formatted.add("fuzz.st", refhost::withEdits(sources.text(0), formatting.edits));
  const refhost::Formatting again = refhost::formatSource(formatted, 0);
  if (!again.errors.empty() || !again.edits.empty()) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  // Loads the plugin once; that the fuzzer counts coverage in its memory asks for that, too.
  static const std::unique_ptr<refhost::Session> session = started();
  session->restart();
  session->sources().add("fuzz.st", std::string(reinterpret_cast<const char*>(bytes), size));
  const bool accepted = session->analyse();
  for (const refhost::Diagnostic& message : session->messages()) {
    if (message.text.empty()) std::abort();
    static_cast<void>(velc::diagnosticText(session->sources(), message));
    static_cast<void>(velc::diagnosticJson(session->sources(), message));
  }
  if (accepted && session->translate().empty()) std::abort();
  checkFormat(session->sources());
  return 0;
}
