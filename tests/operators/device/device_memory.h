// A host with device memory, and calls told with all that comes of them in a line.
#pragma once

#include <initializer_list>
#include <regex>
#include <sstream>

#include "support/plugin.h"

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
