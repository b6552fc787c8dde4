#include <initializer_list>
#include <regex>
#include <sstream>
#include <stdexcept>

#include "operators/device/local_io.h"
#include "support/plugin.h"

namespace {

// A host with device memory, and calls told with all that comes of them in a line.
class DeviceMemoryTest : public PluginTest {
 protected:
  DeviceMemoryTest() {
    add(0,
        "%IX0.3=3 %ix0.5=5 bIX=3 %I=3 %IX1.7=15 %IX2.0=16 %QX0.0=0 %QX0.7=7 %qx1.0=8 %QX1.4=12 "
        "%QX1.7=15 %QX2.0=16 %QX2.7=23 %MX0.0=0 %MX0.7=7 b7=7 X5=5 x5=5 Y5=5 y5=5 M0=0 m15=15 "
        "S0=0 B0=0 D1.3=83 D1.9=89 C0=0");
    add(1, "%MB3=3");
    add(2, "%MW2=4 %MW3=6 %IW0=0 D10=20 d12=24 R10=20 W10=20 D10.L=20");
    add(4, "%MD2=8 D99=198");
  }

  // Each row is `GIVEN: RESULT`.
  template <class Function>
  static void expect(std::initializer_list<const char*> rows, Function result) {
    for (const std::string row : rows) {
      const std::string given = row.substr(0, row.rfind(": "));
      EXPECT_EQ(given + ": " + result(given), row);
    }
  }
  // Of a call: `+` for accepted, the result type written, the faults (`5kind` is one at offset 5),
  // the C text of an accepted call.
  void expectCalls(std::initializer_list<const char*> rows) {
    expect(rows, [this](const std::string& call) { return outcome(call); });
  }
  std::string outcome(const std::string& source) {
    TestTree tree;
    Invocation* call = tree.parse(source);
    vel::STOperator* op = find(source.substr(0, source.find_first_of("({")));
    const Verdict verdict = checkBothWays(*op, call, "", "");
    std::string out = (verdict.accepted ? "+" : "-") + verdict.resultType + " " + verdict.messages;
    static const std::string kFaults[][2] = {
        {R"(E C0220 This address\((.*)\) is not supported;)", "$1kind $2 "},
        {"E C0221 Address '(.*)' is not valid;", "$1valid $2 "},
        {R"(W C0221 This address\((.*)\) is overflow the local address;)", "$1local $2 "},
        {R"(E C0222 The start address\((.*)\) does not match the end address\((.*)\);)",
         "$1match $2 $3 "},
        {R"(E C0223 The start address\((.*)\) is greater than the end address\((.*)\);)",
         "$1order $2 $3 "},
        {"E C0037 '(.*)' are not allowed to be assigned values;", "$1assign $2 "},
        {"E C0131 '(.*)' are not allowed to be '(.*)' parameters;", "$1type $2 $3 "},
        {"E C0131 '(.*)' abnormal parameters;", "$1list $2 "},
        {"E C0040 Too many parameters, too few .* in PRG '(.*)';", "$1count $2 "}};
    for (const auto& [text, sign] : kFaults) {
      const std::regex fault("\n?@(\\d+) " + text);
      out = std::regex_replace(out, fault, sign);
    }
    out = std::regex_replace(out, std::regex(" +(?= |$)"), "");
    return out + (verdict.accepted ? " " + op->generate(&generator, call) : "");
  }
  std::string generate(const std::string& source) {
    TestTree tree;
    return find(source.substr(0, source.find('(')))->generate(&generator, tree.parse(source));
  }

 private:
  // Addresses `TEXT=RAW` of units of `size` bytes, of bits for 0.
  void add(std::uint32_t size, const std::string& list) {
    std::istringstream in(list);
    TestAddress made;
    for (std::string text; std::getline(in >> std::ws, text, '=') && in >> made.raw;) {
      made.parts = {text.substr(0, text.find_first_of("0123456789%")), "", ""};
      if (text[0] != '%' && text.find('.') != std::string::npos) made.parts.suffix = ".";
      made.address.area = static_cast<std::uint32_t>(host.addresses.size()) + 1;
      made.address.unitSize = size == 0 ? 1 : size;
      made.address.position = made.raw;
      made.address.bitIndex = size == 0 ? made.raw % 8 : ~0U;
      host.addresses[text] = made;
    }
  }
};

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
      EXPECT_EQ(found.find("local") != std::string::npos, outside) << row;
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

using DirectIO = DeviceMemoryTest;

TEST_F(DirectIO, Calls) {
  host.readOnly = {"b9"};
  host.complaints = {"b8"};
  expectCalls({"_READIDIRECT(%IX0.3, b): -BOOL 0count _READIDIRECT",
               "izset(b): -INVALID 0count IZSET", "_readidirect{%IX0.3}: -BOOL 0list _READIDIRECT",
               "izrst: -INVALID 0count IZRST", "IWRBIT(%QX0.0, 5): -INVALID 15type 5 P",
               "IWRBIT(u, x): -INVALID 7valid u 10type x P",
               "IWRBIT(%QX0.0, b8): -INVALID @15 E F0002 b8 in P",
               "_WRITEODIRECT(%QX0.0, b + 1): +INVALID _WRITEODIRECT(0, b + 1')",
               "IRDBIT(%IX0.3, b + 1): -INVALID 15assign b + 1",
               "IRDBIT(u, TRUE): -INVALID 7valid u 10assign TRUE",
               "IRDBIT(%IX0.3, b(x)): +INVALID b(x)' = _READIDIRECT(3)",
               "IZSET(%QX0.0, %QX0.0): +INVALID mset(0,1, 1, 0xFF)",
               "IZRST(%QX1.7, %QX0.0): -INVALID 14order %QX1.7 %QX0.0",
               "IZSET(%QX0.0, u): -INVALID 14valid u",
               "IZSET(u, %QX0.0): -INVALID 6valid u 9order u %QX0.0",
               "Izset(%QX0.0, %QX0.7): +INVALID _WRITEODIRECT(0, %QX0.7')"});
  EXPECT_EQ(TestHost::take(host.calls), "");
  expectCalls({"irdbit(%IX0.3, b.1): +INVALID _WRITEODIRECT(3, b.1')",
               "IRDBIT(%IX0.3, i): -INVALID 15type i P",
               "IRDBIT(%IX0.3, b9): -INVALID @0 E F0003 b9"});
  EXPECT_EQ(TestHost::take(host.calls), "write b.1 in P\nwrite i in P\nwrite b9 in P");

  // Name and list are all that may be in an invocation.
  TestTree tree;
  Invocation* call = tree.parse("iwrbit(%QX0.0, b)");
  std::vector<vel::VELMessage> messages;
  std::string type;
  for (const auto& leaves : {std::vector<vel::ASTNode*>{}, {call->leaf(0), call->leaf(1), call}}) {
    EXPECT_FALSE(find("IWRBIT")->check(&host, tree.node({}, leaves), messages, type, "P"));
  }
  EXPECT_EQ(type + TestHost::describe(messages),
            "INVALID" + countMessage(0, "") + "\n" + countMessage(0, "IWRBIT"));
}

TEST_F(DirectIO, ReadsIntoBits) {
  expect(
      {"vgbit((p, 3)): vsbit(p, 3", "(vgbit(((p), 3))): vsbit((p), 3", "vgbit (()) : vsbit(",
       "\v vgbit\t( (p) )\r\n\f: vsbit( (p) ", "vgbit(a).vgbit(b): vsbit(a).vgbit(b",
       "gbit(vgbit(7)): vsbit(gbit((7))", "gbit(7): sbit((7)", " gbit( gbit ) : sbit( ( gbit ) "},
      [this](const std::string& bit) {
        generator.texts["b"] = bit;
        const std::string text = generate("IRDBIT(%ix0.5, b)");
        EXPECT_NE(text.find(", _READIDIRECT(5))"), std::string::npos);
        return text.substr(0, text.rfind(", _READIDIRECT(5))"));
      });
  EXPECT_EQ(generate("IRDBIT(u)") + generate("IRDBIT(u, b, b)"),
            " = _READIDIRECT(4000) = _READIDIRECT(4000)");
  EXPECT_EQ(generate("IZSET(%QX0.0)") + generate("IZSET()"), "");
}

// The output range, cut to 32 bits, and what of the outputs 12 to 23 is refreshed.
TEST_F(DirectIO, Zones) {
  const std::string fill = "mset(12,12, 1, 0xFF)";
  const std::string refresh = ";\r\n__platform_api.UPDATEOUTPUT( ";
  expect({": ", "-: ", "I:-;Q:0-16: ", "I:-;Q:0-12;: ", "I:-;Q:13-99;: ", "I:-;Q:-;: ",
          "I:-;Q:0-16;: 12, 4)", "I:-;Q:12-13;: 0, 1)", "I:-;Q: +8 -99;: 4, 12)",
          "I:-;Q:0-9999999999999999999;: 12, 12)", "I:-;Q:0-4294967309;: 12, 1)"},
         [&](const std::string& option) {
           generator.options["localio.addr"] = option;
           std::string text = generate("IZSET(%QX1.4, %QX2.7)");
           EXPECT_EQ(text.substr(0, fill.size()), fill);
           text.erase(0, fill.size());
           return text.find(refresh) == 0 ? text.substr(refresh.size()) : text;
         });
  EXPECT_EQ(generate("IZRST(%QX1.7, %QX0.0)"), "mset(15,4294967282, 1, 0)");
}

TEST_F(DirectIO, StaticCode) {
  const std::string macros = "#define _READIDIRECT gbit\r\n#define _WRITEODIRECT sbit\r\n";
  for (const char* name : {"IRDBIT", "IWRBIT", "_READIDIRECT", "_WRITEODIRECT", "IZSET", "IZRST"}) {
    EXPECT_EQ(find(name)->staticCode(), macros);
    expect({": macros", "-: macros", "I:0-16;Q:8-24: macros",
            "I:-6;Q:8-9;: ", "I:0-;Q:8-9;: ", "I:0-6;Q:-9;: ", "I:0-6;Q:8-;: "},
           [&](const std::string& option) {
             generator.options["localio.addr"] = option;
             const std::string text = find(name)->staticCode(&generator);
             return text == macros ? "macros" : text;
           });
    generator.options["localio.addr"] = "I: 0-+16;Q:N-24;";
    EXPECT_EQ(find(name)->staticCode(&generator),
              "u8 _READIDIRECT(u32 addr) {\n  if( 0<= addr && addr <+16)\n"
              "    __platform_api.UPDATEINPUT( addr -  0, 1);\n  return gbit(addr);\n}\n"
              "void _WRITEODIRECT(u32 addr, u8 d) {\n  sbit(addr,d);\n  if(N<= addr && addr <24)\n"
              "    __platform_api.UPDATEOUTPUT( addr - N, 1);\n}\n");
  }
}

}  // namespace
