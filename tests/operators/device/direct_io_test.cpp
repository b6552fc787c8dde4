#include "operators/device/device_memory.h"

namespace {

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
        EXPECT_NE(text.find(", _READIDIRECT(5))"), text.npos);
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
