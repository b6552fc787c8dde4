// An analysed program for the tests of the editor's view, and the texts of the examples.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "refhost/editor/program_view.h"
#include "refhost/session.h"
#include "tests/refhost/one_case_in.h"
#include "tests/refhost/translation.h"

namespace refhost {

struct SourceText {
  std::string name;
  std::string text;
};

// One session for many texts.
class Queried {
 public:
  // `warnings` are shown besides those that are not hidden.
  explicit Queried(const char* warnings = "") : session_(options(warnings)) {
    std::string error;
    EXPECT_TRUE(session_.start(error)) << error;
  }

  bool analyse(const std::vector<SourceText>& sources) {
    session_.restart();
    for (const SourceText& source : sources) session_.sources().add(source.name, source.text);
    return session_.analyse(true);
  }
  const ProgramView& view() const { return session_.view(); }
  Session& session() { return session_; }

 private:
  static Options options(const char* warnings) {
    Options options;
    options.warnings.choose(warnings, true);
    options.pluginPath = VELOPS_PLUGIN;
    return options;
  }

  Session session_;
};

// Names of every kind, in different spellings; a name that means several things.
inline const char* const kAllKinds =
    "TYPE Color : (Red, Green := 5, Blue); Pt : STRUCT x, y : INT; c : Color; END_STRUCT;\n"
    "Pts : ARRAY[0..1] OF Pt := [(x := 1, y := 2), (c := Green)]; Level : INT(0..9); END_TYPE\n"
    "VAR_GLOBAL CONSTANT size : INT := 3; END_VAR\n"
    "VAR_GLOBAL total : INT; lamp AT %QX0.0 : BOOL; mode : (Off, On); open AT %Q* : BOOL; END_VAR\n"
    "FUNCTION Twice : INT VAR_INPUT n : INT; END_VAR VAR_OUTPUT more : BOOL; END_VAR\n"
    "twice := N * 2; more := TWICE > 0; END_FUNCTION\n"
    "FUNCTION_BLOCK Pump VAR_INPUT run : BOOL; END_VAR VAR_OUTPUT flow : INT; END_VAR\n"
    "VAR_IN_OUT sum : INT; END_VAR VAR t : TON; spare AT %Q* : BOOL; END_VAR VAR_EXTERNAL total : "
    "INT; END_VAR\n"
    "t(IN := RUN, PT := T#1s); IF t.Q THEN flow := Twice(n := 2); sum := SUM + Total; END_IF;\n"
    "END_FUNCTION_BLOCK\n"
    "PROGRAM Main VAR_INPUT start : BOOL; END_VAR\n"
    "VAR p : Pump; a : ARRAY[1..SIZE] OF Pt; k : INT; c : Color := Color#Red; own : (One, Two);\n"
    "r : REFERENCE TO INT; total : INT; q : POINTER TO Pt; color : INT; b : BOOL; END_VAR\n"
    "P(run := start, SUM := k, flow => total); a[k].x := a[1].Y + p.Flow; c := COLOR#blue;\n"
    "r REF= k; q := ADR(a[1]); q^.y := Twice(k, more => b); own := two;\n"
    "CASE c OF Red, Color#Green: k := LIMIT(0, K, size); Blue: FOR k := 1 TO 3 DO total := 0; "
    "END_FOR; END_CASE;\nlamp := c = Red AND mode = On; a[2] := a[1];\nEND_PROGRAM\n"
    "CONFIGURATION Plant VAR_GLOBAL shared : BOOL; END_VAR RESOURCE Cpu ON Any\n"
    "TASK fast(INTERVAL := T#10ms, PRIORITY := size); PROGRAM line WITH FAST : Main(start := "
    "shared);\n"
    "END_RESOURCE VAR_CONFIG cpu.line.p.spare AT %QX1.0 : BOOL; Line.k : INT := 4;\n"
    "Open AT %QX2.0 : BOOL; END_VAR END_CONFIGURATION\n"
    "SETUP VAR pump1 : Pump; level : Level; END_VAR level := 2; END_SETUP\n"
    "TEST 'fills' VAR s : INT; END_VAR Pump1(run := TRUE, sum := S); ASSERT_EQ(LEVEL, 2);\n"
    "ASSERT_EQ(pump1.t.ET, T#0s); END_TEST\n"
    "TEARDOWN level := 0; END_TEARDOWN\n";

// The programs whose files belong together.
inline std::vector<std::vector<SourceText>> programs() {
  namespace fs = std::filesystem;
  const auto read = [](const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return SourceText{path.filename().string(), {std::istreambuf_iterator<char>(file), {}}};
  };
  const fs::path folder = fs::path(VELOPS_SOURCE) / "examples";
  std::vector<std::vector<SourceText>> all{{{"all.st", kAllKinds}}};
  for (const char* const name :
       {"filling_line.st", "gate_iec.st", "lift.st", "temperature_control.st", "valve.st",
        "filling_station_faulty.st"}) {
    all.push_back({read(folder / name)});
  }
  all.push_back({read(folder / "filling_station.st"), read(folder / "filling_station_test.st")});
  all.emplace_back();
  for (const auto& entry : fs::directory_iterator(folder / "large" / "src")) {
    if (entry.path().extension() == ".st") all.back().push_back(read(entry.path()));
  }
  const auto byName = [](const SourceText& a, const SourceText& b) { return a.name < b.name; };
  std::sort(all.back().begin(), all.back().end(), byName);
  return all;
}

}  // namespace refhost
