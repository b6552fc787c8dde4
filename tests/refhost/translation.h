// A translation of a source text with the real plugin.
#pragma once

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "refhost/session.h"

namespace refhost {

inline std::unique_ptr<Session> analysed(const std::string& source, Options options = {}) {
  options.pluginPath = VELOPS_PLUGIN;
  auto session = std::make_unique<Session>(std::move(options));
  std::string error;
  EXPECT_TRUE(session->start(error)) << error;
  session->sources().add("test.st", source);
  session->analyse();
  return session;
}

// "line:column severity code text" of each message.
inline std::vector<std::string> said(const Session& session) {
  std::vector<std::string> lines;
  for (const vel::VELMessage& message : session.messages()) {
    const LineColumn at = const_cast<Session&>(session).sources().position(message.location);
    lines.push_back(fmt::format("{}:{} {} {:X} {}", at.line, at.column,
                                message.severity == 1 ? "error" : "warning", message.code,
                                message.text));
  }
  return lines;
}

// The variables of one row of a table, then a statement on a line of its own.
inline std::string program(const std::string& variables, const std::string& statement) {
  return "PROGRAM P VAR " + variables + " END_VAR\n" + statement + "\nEND_PROGRAM\n";
}

// The C lines of a program's scan function, without its frame and the note that it
// leaves its variables alone.
inline std::string scanText(Session& session) {
  const std::string text = session.translate();
  const std::size_t head = text.find("P_scan(void) {");
  const std::size_t start = text.find("P_data;\n", head);
  if (start == std::string::npos) return text;
  std::string lines = text.substr(start + 8, text.rfind("}\n") - start - 8);
  const std::string unused = "  (void)self;\n";
  if (lines.compare(0, unused.size(), unused) == 0) lines.erase(0, unused.size());
  return lines;
}

}  // namespace refhost
