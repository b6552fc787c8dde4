#include "velc_fixture.h"

namespace velc {
namespace {

TEST_F(Velc, SharesGlobalVariablesBetweenFiles) {
  write("use.st",
        "PROGRAM A VAR_EXTERNAL total : INT; name : Name; END_VAR\n"
        "VAR t : STRING[N + 1]; END_VAR\n"
        "total := total + Step(); shared(d := N); t := name; %QB5 := %QB5 + 1; END_PROGRAM;\n"
        "PROGRAM B VAR total : INT := 5; END_VAR VAR_OUTPUT sum : INT; END_VAR\n"
        "total := total + 1; sum := shared.sum; END_PROGRAM\n"
        "FUNCTION Step : INT; Step := N; END_FUNCTION\n"
        "FUNCTION_BLOCK Acc VAR_INPUT d : INT; END_VAR VAR_OUTPUT sum : INT := N; END_VAR\n"
        "sum := sum + d; END_FUNCTION_BLOCK\n");
  write(
      "declare.st",
      "VAR_GLOBAL RETAIN shared : Acc; total AT %MW3 : INT := 10; AT %QB5 : USINT := 7; END_VAR\n"
      "CONFIGURATION Plant RESOURCE Cpu ON Soft VAR_GLOBAL name : STRING[N] := 'abcdef'; END_VAR\n"
      "TASK fast(INTERVAL := T#10ms, PRIORITY := 1); PROGRAM first WITH fast : A;\n"
      "PROGRAM second : B(sum => total, x WITH fast); END_RESOURCE\n"
      "VAR_ACCESS a : Cpu.total : INT READ_ONLY; END_VAR END_CONFIGURATION\n"
      "TYPE Name : STRING[N]; END_TYPE\n"
      "VAR_GLOBAL CONSTANT N : INT := M + 1; M : INT := 2; END_VAR\n");
  const std::string shown = " --scans 2 --show TOTAL --show n --show %QB5";
  const std::string values = "B.total = 7\nB.sum = 9\ntotal = 16\nN = 3\n%QB5 = 9\n";
  EXPECT_EQ(velc("run use.st declare.st" + shown).out, "A.t = 'abc'\n" + values);
  EXPECT_EQ(velc("run declare.st use.st --set name=\"'xy'\"" + shown).out, "A.t = 'xy'\n" + values);
  EXPECT_EQ(velc("run use.st declare.st --show shared").err,
            "velc: --show: 'shared' is no device address and no global variable\n");
}

}  // namespace
}  // namespace velc
