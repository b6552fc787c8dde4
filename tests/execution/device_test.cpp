// Device memory, direct I/O and bits of parameters.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <bitset>
#include <map>
#include <random>

#include "tests/execution/program.h"

namespace execution {
namespace {

using Row = std::bitset<64>;

// The bits of local I/O, from the first of the area on, and where the areas are in memory.
constexpr int kLocalBits = 100;
constexpr int kFirstInput = 16384 * 8;
constexpr int kFirstOutput = kFirstInput + 1024 * 8;

// A program whose memory consists of rows of 8 bytes, of which each is used by one statement.
class Machine {
 public:
  explicit Machine(refhost::Notation notation) {
    program.options.notation = notation;
    program.options.localIo = fmt::format("X:{}-{};Y:{}-{};", kFirstInput, kFirstInput + kLocalBits,
                                          kFirstOutput, kFirstOutput + kLocalBits);
  }
  // Takes row number `index` of an area, "M", "I" or "Q", with random bits in it.
  Row& take(const std::string& area, int index) {
    const std::string address = fmt::format("%{}L{}", area, index);
    Row& row = rows_[address] = Row(random());
    program.presets[address] = value("LWORD", static_cast<Wide>(row.to_ullong()));
    return row;
  }
  void refreshed(const char* what, int offset, int count) {
    if (offset >= kLocalBits) return;
    program.refreshes +=
        fmt::format("UPDATE{} = {}, {}\n", what, offset, std::min(count, kLocalBits - offset));
  }
  void run() {
    for (const auto& [address, row] : rows_) {
      program.expectAt(address, value("LWORD", static_cast<Wide>(row.to_ullong())));
    }
    program.run();
  }

  Program program;
  std::mt19937_64 random{1};

 private:
  std::map<std::string, Row> rows_;
};

// Devices of which zones can be made. The units of a device letter are counted through.
struct Device {
  const char* letters;
  int unit;  // bits
  const char* area;
  int firstRow;
  const char* operators;
};
std::string address(const Device& device, int row, int unit) {
  const int number = row * 64 / device.unit + unit;
  const std::string letters = device.letters;
  if (letters != "%MX" && letters != "%IX" && letters != "%QX") {
    return fmt::format("{}{}", letters, number);
  }
  return fmt::format("{}{}.{}", letters, number / 8, number % 8);
}

class Devices : public testing::TestWithParam<refhost::Notation> {};
using refhost::Notation;

TEST_P(Devices, Zones) {
  // IZSET and IZRST know outputs, ZSET of IEC addresses bits and bytes.
  const std::map<Notation, std::vector<Device>> devices = {
      {Notation::Iec,
       {{"%MX", 1, "M", 0, "ZSET ZRST"},
        {"%QX", 1, "Q", 0, "IZSET IZRST ZSET ZRST"},
        {"%MB", 8, "M", 200, "ZSET ZRST"},
        {"%QB", 8, "Q", 64, "ZSET ZRST"},
        {"%MW", 16, "M", 400, "ZRST"},
        {"%MD", 32, "M", 600, "ZRST"},
        {"%ML", 64, "M", 800, "ZRST"}}},
      {Notation::Letters,
       {{"M", 1, "M", 0, "ZSET ZRST"},
        {"Y", 1, "Q", 0, "IZSET IZRST ZSET ZRST"},
        {"D", 16, "M", 384, "ZSET ZRST"},
        {"W", 16, "M", 1920, "ZSET ZRST"}}}};
  Machine machine(GetParam());
  machine.program.proves("IZSET IZRST ZSET ZRST");
  for (const Device& device : devices.at(GetParam())) {
    const bool counted = GetParam() == Notation::Letters;
    int row = counted ? 0 : device.firstRow;
    std::istringstream operators(device.operators);
    for (std::string name; operators >> name;) {
      for (int zone = 0; zone < 12; ++zone, ++row) {
        const int units = 64 / device.unit;
        int from = static_cast<int>(machine.random() % static_cast<unsigned>(units));
        int to =
            zone == 0 ? from : static_cast<int>(machine.random() % static_cast<unsigned>(units));
        if (from > to) std::swap(from, to);
        Row& bits = machine.take(device.area, counted ? device.firstRow + row : row);
        for (int bit = from * device.unit; bit < (to + 1) * device.unit; ++bit) {
          bits[static_cast<std::size_t>(bit)] = name.find("SET") != std::string::npos;
        }
        machine.program.body += fmt::format("{}({}, {});\n", name, address(device, row, from),
                                            address(device, row, to));
        if (name[0] == 'I') machine.refreshed("OUTPUT", row * 64 + from, to - from + 1);
      }
    }
  }
  machine.run();
}

TEST_P(Devices, Bits) {
  const bool counted = GetParam() == Notation::Letters;
  const Device in{counted ? "X" : "%IX", 1, "I", 0, ""};
  const Device out{counted ? "Y" : "%QX", 1, "Q", 0, ""};
  const Device marker{counted ? "M" : "%MX", 1, "M", 0, ""};
  Machine machine(GetParam());
  Program& program = machine.program;
  program.proves("_READIDIRECT IRDBIT IWRBIT _WRITEODIRECT");
  program.variables = "target : WORD;\n";
  Row word;
  for (int row = 0; row < 3; ++row) {
    const Row inputs = machine.take("I", row);
    Row& outputs = machine.take("Q", row);
    Row& markers = machine.take("M", row);
    for (int bit = 0; bit < 64; bit += 3) {
      const auto at = static_cast<std::size_t>(bit);
      const std::string input = address(in, row, bit);
      const int number = row * 64 + bit;
      program.variables += fmt::format("got{0}, read{0} : BOOL;\n", number);
      program.body +=
          fmt::format("got{0} := _READIDIRECT({1}); IRDBIT({1}, read{0});\n", number, input);
      program.expectVariable(fmt::format("got{}", number), value("BOOL", inputs[at]));
      program.expectVariable(fmt::format("read{}", number), value("BOOL", inputs[at]));
      program.body += fmt::format("IRDBIT({0}, {1}); IRDBIT({0}, target.{2});\n", input,
                                  address(marker, row, bit), bit % 16);
      markers[at] = inputs[at];
      word[at % 16] = inputs[at];
      for (int read = 0; read < 4; ++read) machine.refreshed("INPUT", row * 64 + bit, 1);

      const bool sets = machine.random() % 2 != 0;
      program.body += fmt::format("{}({}, {});\n", bit % 2 == 0 ? "IWRBIT" : "_WRITEODIRECT",
                                  address(out, row, bit), program.input(value("BOOL", sets)));
      outputs[at] = sets;
      machine.refreshed("OUTPUT", row * 64 + bit, 1);
    }
  }
  program.expectVariable("target", value("WORD", static_cast<Wide>(word.to_ulong())));
  machine.run();
}

INSTANTIATE_TEST_SUITE_P(Both, Devices, testing::Values(Notation::Iec, Notation::Letters),
                         [](const auto& test) {
                           return test.param == Notation::Iec ? "Iec" : "Letters";
                         });

// Every bit of every type is read, then written; what is no bit reads 0 and stays. The bits of
// integers have names, too.
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
  program.run();
}

}  // namespace
}  // namespace execution
