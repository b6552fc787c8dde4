#include "operators/device/device_memory.h"

namespace {

using BitParam = DeviceMemoryTest;

TEST_F(BitParam, Calls) {
  generator.texts["b"] = "";
  host.complaints = {"i"};  // does not fail the check
  host.declare("p", vel::POUType::FunctionBlock, {-1, vel::SymbolVar::kBitParameter});
  expectCalls({"GETBITOFPARAM(In, 3): + getBitOfParam(&offsetParam_IN,3')",
               "getbitofparam(IN, by): + getBitOfParam(&offsetParam_IN,by')",
               "setbitofparam(in, us, TRUE): + setBitOfParam(&offsetParam_IN,us',TRUE')",
               "SETBITOFPARAM{in, i, b}: + @18 E F0002 i in P setBitOfParam(&offsetParam_IN,i')",
               "SETBITOFPARAM(in, 1, 5): - 0type 5 P", "SETBITOFPARAM(in, 1.5, b): - 0type 1.5 P",
               "setbitofparam(u, r, t): - 0type U SETBITOFPARAM 0type r P 0type t P",
               "getbitofparam(x, 1, 2): - 0count GETBITOFPARAM",
               "SETBITOFPARAM(in, 1): - 0count SETBITOFPARAM",
               "getbitofparam: - 0count GETBITOFPARAM"});
  host.declare("P", vel::POUType::FunctionBlock, {vel::SymbolVar::kInput});
  expectCalls({"getbitofparam(in, 1): - 0type IN GETBITOFPARAM"});
  host.units.clear();
  expectCalls({"getbitofparam(in, 1): - 0type IN GETBITOFPARAM"});
  EXPECT_EQ(generate("SETBITOFPARAM(in, 1)") + generate("GETBITOFPARAM(in)"), "");
}

}  // namespace
