// Whole calls through the plugin, which depend on all duties that the other tests check.
#include <algorithm>

#include "core/op_manager_api.h"
#include "hostkit/hosttest/duties.h"

namespace hosttest {
namespace {

// Replaces @I by an input bit, @Q and @R by the first and last bit of a zone of outputs, and @M by
// a bit of memory, in the notation that the host uses.
std::string withAddresses(HostUnderTest& host, std::string statement) {
  const bool letters = host.services().addressNotation() == 1;
  const std::pair<const char*, const char*> places[] = {{"@I", letters ? "X0" : "%IX0.0"},
                                                        {"@Q", letters ? "Y0" : "%QX0.0"},
                                                        {"@R", letters ? "Y7" : "%QX0.7"},
                                                        {"@M", letters ? "M7" : "%MX0.7"}};
  for (const auto& [mark, text] : places) {
    for (std::size_t at = statement.find(mark); at != std::string::npos;
         at = statement.find(mark)) {
      statement.replace(at, 2, text);
    }
  }
  return statement;
}

// The function block "Main", which declares the variables of all sample calls.
Unit sampleUnit() {
  Unit unit = mainUnit();
  unit.type = vel::POUType::FunctionBlock;
  unit.variables.push_back({"bits", "WORD", Section::BitParameter});
  unit.variables.push_back({"byte", "BYTE"});
  for (const ElementaryType& type : elementaryTypes()) {
    unit.variables.push_back({"of" + std::string(type.name), type.name});
  }
  return unit;
}

// A correct call of an operator: from the table, with the types in the name of a conversion, or
// with a REAL for numeric functions.
std::string sampleCall(const std::string& name) {
  static const std::pair<const char*, const char*> kCalls[] = {
      {"IRDBIT", "IRDBIT(@I, b)"},
      {"IWRBIT", "IWRBIT(@Q, b)"},
      {"_READIDIRECT", "b := _READIDIRECT(@I)"},
      {"_WRITEODIRECT", "_WRITEODIRECT(@Q, b)"},
      {"IZSET", "IZSET(@Q, @R)"},
      {"IZRST", "IZRST(@Q, @R)"},
      {"ZSET", "ZSET(@Q, @R)"},
      {"ZRST", "ZRST(@M, @M)"},
      {"GETBITOFPARAM", "b := GETBITOFPARAM(bits, 3)"},
      {"SETBITOFPARAM", "SETBITOFPARAM(bits, i, b)"},
      {"ROL", "y := ROL(i, 1)"},
      {"ROR", "y := ROR(i, 1)"},
      {"SHL", "y := SHL(i, 1)"},
      {"SHR", "y := SHR(i, 1)"},
      {"LIMIT", "y := LIMIT(0, i, 100)"},
      {"SIZEOF", "ofUDINT := SIZEOF(i)"},
      {"MIN", "y := MIN(i, j)"},
      {"MAX", "y := MAX(i, j)"},
      {"MEP", "c := MEP(b)"},
      {"MEF", "c := MEF(b)"},
      {"SEL", "y := SEL(b, i, j)"},
      {"MUX", "y := MUX(0, i, j)"},
      {"MOVE", "y := MOVE(i)"},
      {"ADR", "ofUDINT := ADR(i)"},
      {"EXPT", "r := EXPT(r, r)"},
      {"TRUNC", "ofDINT := TRUNC(r)"},
      {"BCD_TO_INT", "y := BCD_TO_INT(byte)"},
      {"INT_TO_BCD", "byte := INT_TO_BCD(i)"},
  };
  for (const auto& [known, call] : kCalls) {
    if (name == known) return call;
  }
  const std::size_t to = name.find("TO_");
  if (to == std::string::npos) return "r := " + name + "(r)";
  const std::string source = to > 1 ? name.substr(0, to - 1) : "INT";
  const std::string target = name.substr(to + 3);
  return "of" + target + " := " + name + "(of" + source + ")";
}

// The first message, to explain an unexpected result of a check.
std::string firstOf(const std::vector<vel::VELMessage>& messages) {
  return messages.empty() ? "without a message" : "\"" + messages.front().text + "\"";
}

void everyOperatorGivesC(HostUnderTest& host) {
  Faults wrong;
  for (const std::string& name : pluginOperators()) {
    const std::string sample = sampleCall(name);
    const bool needsMemory = sample.find('@') != std::string::npos;
    if (needsMemory && host.services().deviceMemory() == nullptr) continue;
    Call call(host, {sampleUnit()}, withAddresses(host, sample));
    if (!call.isUsable()) {
      wrong.addIf(true, sample + " has no tree");
    } else if (!call.check()) {
      wrong.addIf(true, sample + " is refused " + firstOf(call.messages));
    } else {
      call.accept();
      wrong.addIf(call.generate().empty(), sample + " gives no C");
    }
  }
  EXPECT_EQ(wrong.text(), "")
      << "The operator's check (core/operator.h) accepts a sound call, and its generate gives C. "
         "The host keeps each duty that is tested, but not together.";
}

void checksRefuse(HostUnderTest& host) {
  const struct {
    const char* statement;
    unsigned int code;
  } rows[] = {
      {"LIMIT(0, i)", 0xC0040},
      {"SQRT(r, r)", 0xC0040},
      {"MOVE(i, j)", 0xC0040},
      {"INT_TO_STRING(i, j)", 0xC0040},
      {"INT_TO_REAL(s)", 0xC0032},
      {"SEL(i, i, j)", 0xC0032},
      {"SHL(r, 1)", 0xC0032},
      {"STRING_TO_INT(i)", 0xC0032},
      {"INT_TO_STRING(s)", 0xC0032},
      {"BCD_TO_INT(i)", 0xC0032},
      {"TRUNC(b)", 0xC0032},
      {"y := MOVE(s)", 0xC0032},
      {"y := MAX(s, s)", 0xC0032},
      {"ROL(i, r)", 0xC0131},
      {"MUX(r, i, j)", 0xC0131},
      {"MEP(i)", 0xC0131},
      {"ADR(5)", 0xC0131},
      {"IWRBIT(@Q, i)", 0xC0131},
      {"GETBITOFPARAM(i, 1)", 0xC0131},
      {"SIN(s)", 0xC0072},
      {"SIZEOF(nothing)", 0xC0046},
      {"_READIDIRECT(@Q)", 0xC0220},
      {"ZSET(@I, @I)", 0xC0220},
      {"IZSET(nothing, @R)", 0xC0221},
      {"IZSET(@R, @Q)", 0xC0223},
      {"ZRST(@R, @Q)", 0xC0223},
  };
  Faults wrong;
  for (const auto& row : rows) {
    const bool needsMemory = std::string(row.statement).find('@') != std::string::npos;
    if (needsMemory && host.services().deviceMemory() == nullptr) continue;
    Call call(host, {sampleUnit()}, withAddresses(host, row.statement));
    const bool accepted = call.isUsable() && call.check();
    const bool told = std::any_of(
        call.messages.begin(), call.messages.end(), [&row](const vel::VELMessage& message) {
          return message.code == row.code && message.severity == 1 && !message.text.empty();
        });
    wrong.addIf(!call.isUsable(), row.statement + std::string(" has no tree"));
    wrong.addIf(call.isUsable() && (accepted || !told),
                row.statement + std::string(accepted ? " is accepted" : " is refused ") +
                    (accepted ? "" : firstOf(call.messages)));
  }
  EXPECT_EQ(wrong.text(), "")
      << "The operator's check (core/operator.h) refuses each of these calls with the message of "
         "its fault. The host has made the operator believe otherwise.";
}

}  // namespace

const std::vector<std::string>& pluginOperators() {
  static const std::vector<std::string> kNames = {
#include "operator_order.inc"
  };
  return kNames;
}

Duties callDuties() {
  return {{"EveryOperatorGivesC", everyOperatorGivesC}, {"ChecksRefuseWhatIsWrong", checksRefuse}};
}

}  // namespace hosttest
