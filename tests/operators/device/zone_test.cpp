#include "operators/device/device_memory.h"

namespace {

using Zone = DeviceMemoryTest;

TEST_F(Zone, Calls) {
  expectCalls(
      {"ZRST(%MX0.0, %MX0.7): + mset(0,8,1,0)", "zset(%qx1.0, %QX1.7): + mset(8,8,1,0xFF)",
       "ZSET(%MB3, %MB3): + mset(3,1,0,0xFF)", "zrst(%MW2, %MD2): + mset(4,8,0,0)",
       "zset(%MW2, %MW3): - 5kind %MW2 11kind %MW3", "ZRST(%IW0, u): - 5kind %IW0 11valid u",
       "ZRST(u, %MW3): - 5valid u", "ZRST(M0, M0): - 5kind M0 9kind M0",
       "ZRST(%MX0.0, %MW3): - 13match %MX0.0 %MW3", "ZRST(%MW3, %MX0.0): - 11match %MW3 %MX0.0",
       "ZRST(%MX0.7, %MX0.0): - 13order %MX0.7 %MX0.0", "zrst: - 0count zrst",
       "ZRst(b): - 0count ZRst", "zrst(b, b, b): - 0count zrst", "zset{b, b}: - 0list zset"});
  EXPECT_EQ(questions("ZRST(%MX0.0, %MX0.7)"),
            "address %MX0.0\naddress %MX0.7\naddress %MX0.0\naddress %MX0.7");
  EXPECT_EQ(generate("ZRST(%MW3, %MX0.0)"), "mset(6,4294967291,0,0)");
  EXPECT_EQ(generate("ZRST(%MX0.7, u)"), "mset(7,3992,1,0)");
  EXPECT_EQ(generate("ZRST(%MX0.7)"), "");
  host.notation = 1;
  expectCalls({"ZSET(M0, m15): + mset(0,16,1,0xFF)", "ZSET(D10, d12): + mset(20,6,0,0xFF)",
               "ZRST(D1.3, D1.9): + mset(83,7,1,0)", "ZRST(Y5, y5): + mset(5,1,1,0)",
               "ZRST(S0, S0): + mset(0,1,1,0)", "ZRST(B0, b7): + mset(0,8,1,0)",
               "ZRST(R10, R10): + mset(20,2,0,0)", "ZRST(W10, W10): + mset(20,2,0,0)",
               "ZRST(D10, D99): + ", "ZRST(X5, C0): - 5kind X5 9kind C0",
               "ZRST(D10.L, D10): - 5kind D10.L", "ZRST(D10, %MX0.0): - 10kind %MX0.0",
               "ZSET(M0, D10): - 9match M0 D10", "ZSET(M0, Y5): - 9match M0 Y5",
               "ZSET(D10, D1.9): - 10match D10 D1.9", "ZSET(d12, D10): - 10order d12 D10"});
  host.notation = 2;
  expectCalls({"ZSET(%IX0.3, m15): + mset(3,13,1,0xFF)", "ZSET(%MW2, D99): + mset(4,198,0,0xFF)",
               "ZSET(D10.L, D99): - 5kind D10.L"});
}

}  // namespace
