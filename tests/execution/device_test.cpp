// Device memory, direct I/O and bits of parameters.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <sstream>

#include "tests/execution/program.h"

namespace execution {
namespace {

using refhost::Notation;

// The bits of local I/O, from the first of the area on, and where the areas are in memory.
constexpr int kLocalBits = 100;
constexpr int kFirstInput = 16384 * 8;
constexpr int kFirstOutput = kFirstInput + 1024 * 8;

class Devices : public testing::TestWithParam<Notation> {
 protected:
  Devices() {
    program.options.notation = GetParam();
    program.options.localIo = fmt::format("X:{}-{};Y:{}-{};", kFirstInput, kFirstInput + kLocalBits,
                                          kFirstOutput, kFirstOutput + kLocalBits);
  }
  // What the 8 bytes at an address hold before and after.
  void hold(const std::string& address, std::uint64_t before, std::uint64_t after) {
    program.presets[address] = value("LWORD", static_cast<Wide>(before));
    program.expectAt(address, value("LWORD", static_cast<Wide>(after)));
  }

  Program program;
};

// A call, and which bits of the 8 bytes at an address it sets or resets.
struct Zone {
  const char* call;
  const char* address;
  std::uint64_t bits;
  const char* refreshed = nullptr;
};

// clang-format off
constexpr Zone kIec[] = {
    {"ZSET(%MX0.3, %MX1.2)", "%ML0", 0x7F8},
    {"IZSET(%QX0.4, %QX2.1)", "%QL0", 0x3FFF0, "4, 14"},
    {"IZRST(%QX12.0, %QX13.7)", "%QL1", 0xFFFF00000000, "96, 4"},
    {"IZRST(%QX0.16.0, %QX0.0.17.3)", "%QL2", 0xFFF},
    {"ZSET(%QX39.7, %QX39.7)", "%QL4", 1ULL << 63},
    {"ZSET(%MB200, %MB204)", "%ML25", 0xFFFFFFFFFF},
    {"ZRST(%MW1.9.0, %MW25.2)", "%ML100", 0xFFFFFFFFFFFF},
    {"ZRST(%ML800, %ML800)", "%ML800", ~0ULL}};
constexpr Zone kLetters[] = {
    {"ZSET(M3, M10)", "%ML0", 0x7F8},
    {"IZSET(Y4, Y17)", "%QL0", 0x3FFF0, "4, 14"},
    {"IZRST(Y96, Y111)", "%QL1", 0xFFFF00000000, "96, 4"},
    {"ZRST(Y255, Y255)", "%QL3", 1ULL << 63},
    {"ZSET(D1, D2)", "%ML384", 0xFFFFFFFF0000},
    {"ZSET(D8.3, D8.12)", "%ML386", 0x1FF8},
    {"ZRST(W6, W7)", "%ML1921", 0xFFFFFFFF00000000}};
// clang-format on

TEST_P(Devices, Zones) {
  program.proves("IZSET IZRST ZSET ZRST");
  const auto add = [&](const Zone& zone) {
    const std::uint64_t before = 0xA5C3'96E1'5A3C'691E;
    const bool sets = std::string(zone.call).find("SET") != std::string::npos;
    hold(zone.address, before, sets ? before | zone.bits : before & ~zone.bits);
    program.body += fmt::format("{};\n", zone.call);
    if (zone.refreshed != nullptr) {
      program.refreshes += fmt::format("UPDATEOUTPUT = {}\n", zone.refreshed);
    }
  };
  if (GetParam() == Notation::Iec) std::for_each(std::begin(kIec), std::end(kIec), add);
  if (GetParam() != Notation::Iec) std::for_each(std::begin(kLetters), std::end(kLetters), add);
  program.run();
}

TEST_P(Devices, Bits) {
  const auto at = [](char area, char device, int n) {
    return GetParam() == Notation::Iec ? fmt::format("%{}X{}.{}", area, n / 8, n % 8)
                                       : fmt::format("{}{}", device, n);
  };
  const auto refreshed = [&](const char* what, int n, int times) {
    for (; n < kLocalBits && times > 0; --times) {
      program.refreshes += fmt::format("UPDATE{} = {}, 1\n", what, n);
    }
  };
  program.proves("_READIDIRECT IRDBIT IWRBIT _WRITEODIRECT");
  program.variables = "target : WORD;\n";
  const std::uint64_t inputs = 0x9A5C'3E17'D2B4'6F08;
  const std::uint64_t outputs = 0x3B96'C5A1'E870'4D2F;
  std::uint64_t target = 0;
  for (int bit = 0; bit < 64; ++bit) {
    const bool in = (inputs >> bit) % 2 != 0;
    const int n = 64 + bit;  // some of the local ones, and some that are not
    program.variables += fmt::format("got{0}, read{0} : BOOL;\n", n);
    program.body += fmt::format(
        "got{0} := _READIDIRECT({1}); IRDBIT({1}, read{0}); IRDBIT({1}, {2});\n"
        "IRDBIT({1}, target.{3}); {4}({5}, {6});\n",
        n, at('I', 'X', n), at('M', 'M', n), bit % 16, bit % 3 == 0 ? "IWRBIT" : "_WRITEODIRECT",
        at('Q', 'Y', n), program.input(value("BOOL", (outputs >> bit) % 2)));
    program.expectVariable(fmt::format("got{}", n), value("BOOL", in));
    program.expectVariable(fmt::format("read{}", n), value("BOOL", in));
    target = (target & ~(1ULL << bit % 16)) | (in ? 1ULL << bit % 16 : 0);
    refreshed("INPUT", n, 4);
    refreshed("OUTPUT", n, 1);
  }
  hold("%IL1", inputs, inputs);
  hold("%ML1", ~inputs, inputs);
  hold("%QL1", ~outputs, outputs);
  program.expectVariable("target", value("WORD", static_cast<Wide>(target)));
  program.run();
}

INSTANTIATE_TEST_SUITE_P(Both, Devices, testing::Values(Notation::Iec, Notation::Letters),
                         [](const auto& test) {
                           return test.param == Notation::Iec ? "Iec" : "Letters";
                         });

// Arrays, structures and strings in device memory are what their addresses hold.
TEST(LocatedVariables, AreRangesOfDeviceMemory) {
  Program program;
  program.units =
      "TYPE S : STRUCT b : BYTE := 3; l : LREAL; a : ARRAY[1..2] OF INT; END_STRUCT; END_TYPE\n"
      "FUNCTION_BLOCK F VAR_IN_OUT a : ARRAY[0..3] OF INT; s : S; t : STRING[5]; i : INT; END_VAR\n"
      "a[2] := a[1] + 1; s.a[2] := i; i := 9; t := CONCAT(t, 'x'); END_FUNCTION_BLOCK\n"
      "VAR_GLOBAL g AT %QB24 : S; a AT %MW8 : ARRAY[0..3] OF INT := [5, 6, 0, 4]; f : F;\n"
      "s AT %ML4 : S := (l := 2.0); t AT %MB81 : STRING[5] := 'ab'; c : ARRAY[0..3] OF INT;\n"
      "p : POINTER TO S; pb : POINTER TO BYTE; END_VAR\n";
  program.body =
      "f(a := a, s := s, t := t, i := a[3]); p := ADR(s); p^.a[1] := LEN(t); c := a; c[0] := 7;\n"
      "a := c; g := s; pb := ADR(t); pb[3] := 16#79; t := CONCAT(t, t);\n";
  const std::pair<const char*, Wide> words[] = {{"%MW8", 7},  {"%MW9", 6},  {"%MW10", 7},
                                                {"%MW11", 9}, {"%MW16", 3}, {"%MW24", 3},
                                                {"%MW25", 4}, {"%QW12", 3}, {"%QW21", 4}};
  for (const auto& [address, held] : words) program.expectAt(address, value("WORD", held));
  program.expectAt("%QL4", value("LWORD", 0x4000'0000'0000'0000));
  program.expectAt("%MB84", value("BYTE", 'y'));
  program.expectAt("%MB85", value("BYTE", 'a'));
  program.run();
}

// Each instance of a function block has the places that VAR_CONFIG gives it.
TEST(LocatedVariables, AreConfiguredForEachInstance) {
  Program program;
  program.units =
      "FUNCTION_BLOCK V VAR_INPUT on : BOOL; END_VAR VAR out AT %QX* : BOOL; k : INT := 3;\n"
      "level AT %I* : INT := 7; a AT %M* : ARRAY[0..1] OF INT := [1, 2]; t AT %MB* : STRING[3]; "
      "END_VAR\n"
      "out := on; level := level + k; a[1] := a[1] + level; t := CONCAT(t, 'x'); "
      "END_FUNCTION_BLOCK\n"
      "VAR_GLOBAL g AT %Q* : DINT := 4; v : ARRAY[1..2] OF V; s : STRUCT n : INT; v : V; "
      "END_STRUCT;\n"
      "END_VAR\nVAR_CONFIG g AT %QD1 : DINT;\n";
  for (const char* const row : {"v[1] 0 10 0", "v[2] 1 11 4", "s.v 2 12 8"}) {
    std::istringstream parts(row);
    std::string path;
    int bit = 0;
    int word = 0;
    int start = 0;
    parts >> path >> bit >> word >> start;
    program.units += fmt::format(
        "{0}.out AT %QX0.{1} : BOOL; {0}.level AT %IW{2} : INT := {2}; {0}.t AT %MB{3} : "
        "STRING[3];\n"
        "{0}.a AT %MW{4} : ARRAY[0..1] OF INT; {0}.k : INT := {1};\n",
        path, bit, word, 100 + start, start);
    program.expectAt(fmt::format("%IW{}", word), value("WORD", word + bit));
    program.expectAt(fmt::format("%MW{}", start), value("WORD", 1));
    program.expectAt(fmt::format("%MW{}", start + 1), value("WORD", 2 + word + bit));
    program.expectAt(fmt::format("%MW{}", 50 + start / 2), value("WORD", 'x'));
  }
  program.units += "END_VAR\n";
  program.body = "v[1](on := TRUE); v[2](); s.v(on := g = 4); g := g * 2;";
  program.expectAt("%QB0", value("BYTE", 5));
  program.expectAt("%QD1", value("DWORD", 8));
  program.run();
}

// Every bit of every type is read, then written; what is no bit reads 0 and stays. The bits of
// integers have names, too, and so have their bytes, words and double words.
TEST(BitsOfParameters, OfEveryType) {
  Program program;
  program.proves("GETBITOFPARAM SETBITOFPARAM");
  int call = 0;
  for (const Type& type : types()) {
    if (type.text()) continue;
    program.units += fmt::format(
        "FUNCTION_BLOCK Of{0} VAR_IN_OUT {{bitparam}} p : {0}; END_VAR\n"
        "VAR_INPUT n : LINT; v : BOOL; END_VAR VAR_OUTPUT was : BOOL; END_VAR\n"
        "was := GETBITOFPARAM(p, n); SETBITOFPARAM(P, n, v); END_FUNCTION_BLOCK\n",
        type.name);
    program.variables += fmt::format("fb{0} : Of{0};\n", type.name);
    const Value start = samples(type).back();
    const int width = type.bits;
    std::vector<std::int64_t> places = {INT64_MIN, INT64_MAX, std::int64_t{1} << 32};
    for (int n = -1; n <= width; ++n) places.push_back(n);
    for (const std::int64_t n : places) {
      std::string held = bytes(start);
      const bool sets = call % 3 != 0;
      bool was = false;
      if (n >= 0 && n < width) {
        char& byte = held[static_cast<std::size_t>(n / 8)];
        const auto mask = static_cast<unsigned char>(1U << (n % 8));
        was = (byte & mask) != 0;
        byte = static_cast<char>(sets ? byte | mask : byte & ~mask);
      }
      program.variables += fmt::format("p{0} : {1}; was{0} : BOOL;\n", call, type.name);
      program.body +=
          fmt::format("p{0} := {1}; fb{2}(p := p{0}, n := {3}, v := {4}); was{0} := fb{2}.was;\n",
                      call, program.input(start), type.name, n, sets ? "TRUE" : "FALSE");
      program.expectVariable(fmt::format("p{}", call), fromBytes(type, held));
      program.expectVariable(fmt::format("was{}", call), value("BOOL", was));
      if (type.integer() && n >= 0 && n < width) {
        program.variables += fmt::format("x{0} : {1}; had{0} : BOOL;\n", call, type.name);
        program.body += fmt::format("x{0} := {1}; had{0} := x{0}.{2}; x{0}.{2} := {3};\n", call,
                                    program.input(start), n, sets ? "TRUE" : "FALSE");
        program.expectVariable(fmt::format("x{}", call), fromBytes(type, held));
        program.expectVariable(fmt::format("had{}", call), value("BOOL", was));
      }
      ++call;
    }
  }
  constexpr std::pair<char, const char*> kParts[] = {
      {'B', "BYTE"}, {'W', "WORD"}, {'D', "DWORD"}, {'L', "LWORD"}};
  for (const Type& type : types()) {
    for (const auto& [letter, name] : kParts) {
      const int width = typeOf(name).bits;
      const auto mask = ~std::uint64_t{0} >> (64 - width);
      for (int n = 0; type.integer() && (n + 1) * width <= type.bits; ++n, ++call) {
        const Value start = samples(type).back();
        const auto held = static_cast<std::uint64_t>(start.number);
        const Value given = value(name, 0x8F1E'2D3C'4B5A'6978);
        const auto put = static_cast<std::uint64_t>(given.number);
        program.variables += fmt::format("x{0} : {1}; had{0} : {2};\n", call, type.name, name);
        program.body += fmt::format("x{0} := {1}; had{0} := x{0}.%{2}{3}; x{0}.%{2}{3} := {4};\n",
                                    call, program.input(start), letter, n, program.input(given));
        program.expectVariable(fmt::format("had{}", call),
                               value(name, static_cast<Wide>(held >> n * width & mask)));
        program.expectVariable(
            fmt::format("x{}", call),
            value(type.name, static_cast<Wide>((held & ~(mask << n * width)) | put << n * width)));
      }
    }
  }
  program.run();
}

}  // namespace
}  // namespace execution
