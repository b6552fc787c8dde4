#include <stdexcept>

#include "operators/device/device_memory.h"
#include "operators/device/local_io.h"

namespace {

using Memory = DeviceMemoryTest;

TEST_F(Memory, AddressValidationKinds) {
  host.settings.localIoAddress = "I:0-16;Q:0-16;";  // faults of kind are not compared with it
  expectCalls({"_READIDIRECT(%ix0.5): +BOOL _READIDIRECT(5)",
               "_READIDIRECT(bIX): +BOOL _READIDIRECT(3)", "_READIDIRECT(%I): -BOOL 13kind %I",
               "_READIDIRECT(%QX2.0): -BOOL 13kind %QX2.0", "_READIDIRECT(u): -BOOL 13valid u",
               "IWRBIT(%IX0.3, b): -INVALID 7kind %IX0.3",
               "IWRBIT(%qx1.0, b): +INVALID _WRITEODIRECT(8, b')",
               "IRDBIT(%IX0.3, b7): +INVALID b7' = _READIDIRECT(3)",
               "IRDBIT(%IX0.3, %IX2.0): -INVALID 15kind %IX2.0",
               "IRDBIT(%IX0.3, %QX2.0): -INVALID 15type %QX2.0 P"});
  host.notation = 1;
  expectCalls(
      {"_READIDIRECT(x5): +BOOL _READIDIRECT(5)", "_READIDIRECT(%IX0.3): -BOOL 13kind %IX0.3",
       "IWRBIT(y5, b): +INVALID _WRITEODIRECT(5, b')", "IWRBIT(M0, b): -INVALID 7kind M0",
       "IRDBIT(X5, b7): +INVALID b7' = _READIDIRECT(5)", "IRDBIT(X5, x5): -INVALID 11kind x5"});
  host.notation = 2;
  expectCalls({"_READIDIRECT(%QX0.7): +BOOL _READIDIRECT(7)", "IWRBIT(u, b): -INVALID 7valid u",
               "IWRBIT(M0, b): +INVALID _WRITEODIRECT(0, b')",
               "IRDBIT(X5, b7): -INVALID 11kind b7"});
}

TEST_F(Memory, AddressValidationLocalRanges) {
  // The option and addresses, those outside marked.
  for (const char* row : {"; %IX2.0 %QX2.0", "nothing; !%IX0.3 !%QX0.0", "-; !%IX0.3 !%QX0.0",
                          "I:3-16;Q:8-16;; %IX0.3 %IX1.7 %qx1.0 %QX1.7 !%IX2.0 !%QX0.7 !%QX2.0",
                          "I:0-16;; %IX0.3 !%QX0.0", "a--5;; %IX0.3 !%QX0.0",
                          "I:+3- 9;; %IX0.3 !%IX1.7", "I:4294967295-4294967296;; !%IX0.3",
                          "I:0--1;Q:9-99999999999999999999;; %IX2.0 %QX2.7 !%qx1.0"}) {
    const std::string text = row;
    host.settings.localIoAddress = text.substr(0, text.find("; "));
    std::istringstream list(text.substr(text.find("; ") + 1));
    for (std::string address; list >> address;) {
      const bool outside = address[0] == '!';
      address.erase(0, outside ? 1 : 0);
      const std::string name = std::tolower(address[1]) == 'i' ? "IRDBIT(" : "IWRBIT(";
      const std::string found = outcome(name + address + ", b)");
      EXPECT_EQ(found.find("+INVALID" + (outside ? " 7local " + address : " ")), 0U) << row;
      EXPECT_EQ(found.find("local") != found.npos, outside) << row;
    }
  }
  expectCalls(
      {"IZRST(%QX0.0, %QX0.7): +INVALID 6local %QX0.0 14local %QX0.7 mset(0,8, 1, 0)",
       "IZRST(%QX0.7, %IX0.3): -INVALID 6local %QX0.7 14kind %IX0.3 14order %QX0.7 %IX0.3"});
  host.hasSettings = false;
  expectCalls({"IZRST(%QX0.0, %QX0.7): +INVALID mset(0,8, 1, 0)"});
}

TEST_F(Memory, ZoneCalls) {
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

TEST_F(Memory, BitParamCalls) {
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

// The bounds found, "~" where one is left alone; "!" for a text that has not all of them.
TEST_F(Memory, LocalIoParse) {
  expect({": ~,~,~,~!", "I:0;16: ~,~,~,~!", "-1: ,~,~,~!", "I:0-16: 0,~,~,~!",
          "I:0-1;Q-8;: 0,1,~,~!", "I:0-1;Q:8-9: 0,1,8,~!", "I:0-1;Q:8-9;x: 0,1,8,9",
          "I:-;Q:-;: ,,,", "I:a-b-c;;;d-e-f;: a,b-c,d,e-f", "-I1;Q:8-9;: 1;Q:8-9;,I1,8,9"},
         [](const std::string& text) {
           vel::LocalIoBounds is{"~", "~", "~", "~"};
           const bool parsed = vel::parseLocalIoRanges(text, is);
           const std::string input = std::string(is.inStart) + "," + std::string(is.inEnd) + ",";
           return input + std::string(is.outStart) + "," + std::string(is.outEnd) +
                  (parsed ? "" : "!");
         });
  vel::LocalIoBounds bounds;
  EXPECT_THROW(vel::parseLocalIoRanges("-", bounds), std::out_of_range);
}

}  // namespace
