// A translation of a source text with the real plugin.
#pragma once

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "refhost/session.h"

namespace refhost {

inline std::unique_ptr<Session> analysed(const std::string& source, Options options = {},
                                         const char* file = "test.st", bool tests = false) {
  options.pluginPath = VELOPS_PLUGIN;
  auto session = std::make_unique<Session>(std::move(options));
  std::string error;
  EXPECT_TRUE(session->start(error)) << error;
  session->sources().add(file, source);
  session->analyse(tests);
  return session;
}

// "line:column severity code text" of each message.
inline std::vector<std::string> said(const Session& session) {
  std::vector<std::string> lines;
  for (const Diagnostic& message : session.messages()) {
    const LineColumn at = const_cast<Session&>(session).sources().position(message.range.begin);
    lines.push_back(fmt::format("{}:{} {} {:X} {}", at.line, at.column,
                                message.severity == Severity::Error ? "error" : "warning",
                                message.code, message.text));
  }
  return lines;
}

// "column code arguments" of each message in line 2, with the line before it in all others and
// with "~" before the code of a warning. The pages of the messages hold their whole texts.
inline std::string brief(const Session& session) {
  std::string all;
  for (const Diagnostic& message : session.messages()) {
    const LineColumn at = const_cast<Session&>(session).sources().position(message.range.begin);
    all += fmt::format("{}{}{} {}{:X}", all.empty() ? "" : "; ",
                       at.line == 2 ? "" : fmt::format("{}:", at.line), at.column,
                       message.severity == Severity::Error ? "" : "~", message.code);
    const char* before = " ";
    const std::string& text = message.text;
    for (std::size_t open = text.find('\''); open != std::string::npos;) {
      const std::size_t close = text.find('\'', open + 1);
      all += before + text.substr(open + 1, close - open - 1);
      before = ", ";
      open = text.find('\'', close + 1);
    }
  }
  return all;
}

// C text with one blank for all white space, and `@` for `self->`.
inline std::string inOneLine(const std::string& text) {
  std::string line;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool blank = text[i] == ' ' || text[i] == '\n';
    if (blank && (line.empty() || line.back() == ' ')) continue;
    const bool member = text.compare(i, 6, "self->") == 0;
    line += member ? '@' : blank ? ' ' : text[i];
    if (member) i += 5;
  }
  return line.substr(0, line.find_last_not_of(' ') + 1);
}

// The statement of a row, in line 2, may use something of every kind.
inline std::string withEverything(const std::string& statement) {
  return "TYPE Color : (Red, Green := 5, Blue); Light : (Off, On); Level : INT(-10..10); Pt : "
         "STRUCT x, y : INT; END_STRUCT; END_TYPE FUNCTION F : INT VAR_INPUT a : INT; b : INT := "
         "3; END_VAR VAR_OUTPUT q : INT; END_VAR F := a; END_FUNCTION FUNCTION N VAR_INPUT a : "
         "INT; END_VAR END_FUNCTION FUNCTION_BLOCK B VAR_INPUT i : INT; END_VAR VAR_OUTPUT o : "
         "INT; END_VAR VAR_IN_OUT io : INT; END_VAR VAR v : INT; END_VAR END_FUNCTION_BLOCK "
         "PROGRAM P VAR b : BOOL; bt : BYTE; w : WORD; si : SINT; i, j : INT; d : DINT; l : LINT; "
         "u : UINT; ud : UDINT; ul : ULINT; r : REAL; lr : LREAL; t : TIME; lt : LTIME; td : TOD; "
         "dt1 : DT; da : DATE; s : STRING[5]; ws : WSTRING; c : Color; li : Light; lv : Level; pt, "
         "qt : Pt; a : ARRAY[1..3] OF INT; a2 : ARRAY[0..1, -1..1] OF BOOL; ip : POINTER TO INT; "
         "rp : POINTER TO REAL; rf : REF_TO INT; fb : B; fa : ARRAY[0..1] OF B; ptx : POINTER TO "
         "STRING[5]; ppt : POINTER TO Pt; pfb : POINTER TO B; x2 : STRING[3]; xr : REFERENCE TO "
         "INT; xs : REFERENCE TO STRING[5]; xb : REFERENCE TO B; END_VAR VAR CONSTANT "
         "k : INT := 5; lo : LINT := -9223372036854775808; END_VAR\n" +
         statement + "\nEND_PROGRAM\n";
}

// The variables of one row of a table, then a statement on a line of its own.
inline std::string program(const std::string& variables, const std::string& statement) {
  return "PROGRAM P VAR " + variables + " END_VAR\n" + statement + "\nEND_PROGRAM\n";
}

// The C lines of a program's scan function, without its frame and the note that it
// leaves its variables alone.
inline std::string scanText(Session& session) {
  std::string text = session.translate();
  const std::size_t head = text.find("P_scan(void) {");
  const std::size_t start = text.find("P_data;\n", head);
  if (start == std::string::npos) return text;
  std::string lines = text.substr(start + 8, text.rfind("}\n") - start - 8);
  const std::string unused = "  (void)self;\n";
  if (lines.compare(0, unused.size(), unused) == 0) lines.erase(0, unused.size());
  return lines;
}

}  // namespace refhost
