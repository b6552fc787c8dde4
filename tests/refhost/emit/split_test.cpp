#include <map>

#include "refhost/emit/static_texts.h"
#include "tests/refhost/translation.h"

namespace refhost {
namespace {

std::map<std::string, std::string> filesOf(const std::string& source) {
  std::map<std::string, std::string> files;
  for (TranslatedFile& file : analysed(source)->translateSplit()) {
    files.emplace(std::move(file.name), std::move(file.text));
  }
  return files;
}

// The files that `to` changes, adds or lacks if it replaces `from` in a program.
std::string changed(const std::string& program, const std::string& from, const std::string& to) {
  std::string other = program;
  other.replace(other.find(from), from.size(), to);
  const auto before = filesOf(program);
  auto after = filesOf(other);
  std::string names;
  for (const auto& [name, text] : before) {
    const auto same = after.find(name);
    if (same == after.end()) {
      names += '-' + name + ' ';
    } else if (same->second != text) {
      names += name + ' ';
    }
    after.erase(name);
  }
  for (const auto& [name, text] : after) names += '+' + name + ' ';
  return names;
}

TEST(SplitC, ChangesInTheFilesOfWhatChanges) {
  const std::string program =
      "VAR_GLOBAL g : INT; END_VAR TYPE S : STRUCT n : INT := 1; p : POINTER TO S; END_STRUCT; "
      "END_TYPE FUNCTION F : INT VAR_INPUT a : INT; END_VAR VAR x : S; END_VAR F := a + x.n; "
      "END_FUNCTION FUNCTION_BLOCK B VAR_INPUT i : INT; END_VAR VAR s : S; t : TON; END_VAR "
      "VAR_TEMP h : INT; END_VAR t(IN := i > 2); s.n := F(a := i); END_FUNCTION_BLOCK PROGRAM P "
      "VAR b : B; k : INT; END_VAR b(i := k); k := g; END_PROGRAM";
  const std::tuple<const char*, const char*, const char*> rows[] = {
      {"a + x.n", "LIMIT(0, a, x.n)", "F.c "},
      {"s.n := F(a := i)", "s.n := SHL(i, 2)", "B.c "},
      {"k := g", "k := 3", "P.c "},
      {"k := g", "k := g; k := SEL(MEP(k > 1), 1, 2)", "P.c "},
      {"x : S;", "x : S; y : ARRAY[1..3] OF S;", "F.c "},
      {"h : INT", "h : DINT", "B.c "},
      {"n : INT := 1", "n : INT := 2", "vel_types.c "},
      {"k : INT", "k : INT; l : INT", "P.h "},
      {"i : INT", "i : INT := 3", "B.c "},
      {"s : S;", "s, r : S;", "B.c B.h "},
      {"a : INT;", "a, b : INT;", "B.c F.c F.h "},
      {"g : INT", "g, h : INT", "globals.h "},
      {"p : POINTER TO S", "q : POINTER TO S", "S.h "},
      {"PROGRAM P", "FUNCTION X : INT END_FUNCTION PROGRAM P", "vel_all.h +X.c +X.h "},
      {"t(IN := i > 2);", "t();", "B.c "},
  };
  for (const auto& [from, to, files] : rows) EXPECT_EQ(changed(program, from, to), files) << to;
}

TEST(SplitC, KeepsFunctionsOfOperatorsInTheirFile) {
  const std::pair<const char*, const char*> rows[] = {
      {"u8 a(u32 x) {\n  if (x) { return 1; }\n}\nvoid b(void) {}\n", "a(u32 x) b(void) "},
      {"static u8 a(void) {}\ninline u8 b(void) {}\nextern u8 c(void) {}\n", ""},
      {"#define A(x) { \\\n x() {} \\\r\n}\n/* a() { */ // b() {\nu8 c() {}", "c() "},
      {"struct s { int i; };\nint t[] = { 1 };\nconst char* d(int i) { return \"}{\\\"\"; }\n"
       "char e(void) { return '{'; } int f(void);\n",
       "d(int i) e(void) "},
  };
  for (const auto& [text, functions] : rows) {
    std::string names;
    const std::string prototypes = internalPrototypes(text);
    for (std::size_t at = 0; at < prototypes.size(); at = prototypes.find('\n', at) + 1) {
      ASSERT_EQ(prototypes.substr(at, 7), "static ");
      const std::size_t end = prototypes.find(" __attribute__((unused));\n", at);
      const std::size_t name = prototypes.rfind(' ', prototypes.find('(', at)) + 1;
      names += prototypes.substr(name, end - name) + ' ';
    }
    EXPECT_EQ(names, functions) << prototypes;
  }
}

}  // namespace
}  // namespace refhost
