// Sessions and their registries share nothing that changes.
#include <array>
#include <future>

#include "core/op_manager_api.h"
#include "tests/refhost/translation.h"

namespace refhost {
namespace {

// A call of every operator, most of them faulty.
std::string callsOfAll(vel::OpManagerAPI& registry) {
  std::vector<std::string> names;
  registry.operatorNames(names);
  std::string statements;
  for (const std::string& name : names) {
    statements += fmt::format("{0}(i, s, %MW1); i := {0}(i);\n", name);
  }
  return program("i : INT; s : STRING;", statements);
}

// Calls of every family that are right.
const std::string kGood = program(
    "b : BOOL; y : BYTE; i : INT; u : UINT; r : REAL; s : STRING; d : UDINT;",
    "i := REAL_TO_INT(r); i := TO_INT(s); r := TRUNC(r); s := INT_TO_STRING(i); i := BCD_TO_INT(y);"
    "s := TO_STRING(i); i := LIMIT(0, i, MAX(i, 9)); i := SEL(b, i, 2); u := SHL(u, 2);"
    "i := MUX(i, i, 2); i := ROL(i, 2); b := MEP(b); b := MEF(NOT b); i := MOVE(i); r := SQRT(r);"
    "d := SIZEOF(i); d := ADR(i); IRDBIT(%IX0.0, b); IWRBIT(%QX0.0, b); ZRST(%MX1.0, %MX2.0);");

std::string everythingSaidAndWritten(const std::string& source) {
  const auto session = analysed(source);
  std::string text;
  for (const std::string& line : said(*session)) text += line + '\n';
  return text + session->translate();
}

TEST(Threads, HaveARegistryEach) {
  // It lives longer than all others, so that no thread unloads the plugin: the loader has locks
  // that the thread sanitizer does not know.
  const auto first = analysed("");
  const std::string all = callsOfAll(first->operators());
  const std::string messages = everythingSaidAndWritten(all);
  const std::string code = everythingSaidAndWritten(kGood);
  EXPECT_NE(std::string::npos, messages.find("C0040"));
  EXPECT_NE(std::string::npos, code.find("#define LIMIT")) << code;
  std::array<std::future<int>, 8> threads;
  for (auto& thread : threads) {
    thread = std::async(std::launch::async, [&] {
      int same = 0;
      for (int round = 0; round < 3; ++round) {
        same +=
            everythingSaidAndWritten(kGood) == code && everythingSaidAndWritten(all) == messages;
      }
      return same;
    });
  }
  for (auto& thread : threads) EXPECT_EQ(3, thread.get());
}

TEST(Registries, AreIndependent) {
  Options letters;
  letters.notation = Notation::Letters;
  auto first = analysed(program("b : BOOL;", "IWRBIT(Y0, b);"), letters);
  const auto second = analysed(program("b : BOOL;", "IWRBIT(%QX0.0, b);"));
  EXPECT_EQ(std::vector<std::string>(), said(*first));
  EXPECT_EQ(std::vector<std::string>(), said(*second));
  EXPECT_NE(first->operators().findOperator("LIMIT"), second->operators().findOperator("limit"));
  const int count = first->operators().operatorCount();
  first.reset();
  EXPECT_EQ(count, second->operators().operatorCount());
  EXPECT_NE("", second->translate());
}

}  // namespace
}  // namespace refhost
