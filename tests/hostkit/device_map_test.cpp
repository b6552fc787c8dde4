#include "hostkit/device_map.h"

#include <gtest/gtest.h>

#include <sstream>

#include "hostkit/kit_host.h"

namespace {

// The unit's size and bit, its place in bits or bytes, and the type that is read there.
std::string described(const std::string& text) {
  KitHost host;
  vel::DeviceMemory& memory = *host.deviceMemory();
  vel::HeapAddress address;
  if (!memory.string2IecAddress(text, &address, false) || address.area == 0) return "none";
  const std::string bit = address.isBitMode() ? std::to_string(address.bitIndex) : "-";
  EXPECT_EQ(address.isBitMode(), address.bitIndex != 0xFFFFFFFF) << text;
  std::ostringstream all;
  all << address.unitSize << '.' << bit << ' ' << memory.HeapAddress2HeapRawAddr(address).address
      << ' ' << static_cast<int>(memory.iecAddressType(address)) << ' '
      << hostkit::addressTypeName(address);
  return all.str();
}

// Markers have bytes 0 to 16383, inputs and outputs 1024 each behind them; D begins at 3072.
TEST(DeviceMap, AddressesHaveTheirPlace) {
  std::istringstream rows(
      "%MX0.0=1.0 0 24 BOOL|%mx2.7=1.7 23 24 BOOL|%M9=1.1 9 24 BOOL|%IX0.3=1.3 131075 24 BOOL|"
      "%QX1023.7=1.7 147455 24 BOOL|%MB5=1.- 5 5 BYTE|%MW2=2.- 4 6 WORD|%QD1=4.- 17412 7 DWORD|"
      "%ML2047=8.- 16376 8 LWORD|X3=1.3 131075 24 BOOL|y8=1.0 139272 24 BOOL|M0=1.0 0 24 BOOL|"
      "D0=2.- 3072 6 WORD|D10.3=1.3 24739 24 BOOL|D10.15=1.15 24751 24 BOOL|%IW1.15=2.- 16446 6 "
      "WORD|%mx1.31.7=1.7 511 24 BOOL|%MX1.2.0.5=1.5 4613 24 BOOL|%MB1.15.15.31=1.- 16383 5 "
      "BYTE|%ML1.0.0.0=8.- 8192 8 LWORD|%MX1.15.15.31.7=1.7 131071 24 BOOL");
  for (std::string row; std::getline(rows, row, '|');) {
    const std::size_t mark = row.find('=');
    EXPECT_EQ(row.substr(mark + 1), described(row.substr(0, mark))) << row;
  }
}

TEST(DeviceMap, OtherTextsLeaveTheAddressUntouched) {
  KitHost host;
  std::istringstream texts(
      "% %M %MX %MX0.8 %MX16384.0 %MW8192 %QX1024.0 %ZX0.0 %MW1.16 %MX1.32.0 %MX1.1.8 %MB1.16.0 "
      "%MB1.16.0.0 %MB2.0.0.0 %IB32.0 %MB0.0.0.0.0 %MX0.0.0.0.0.0 %MW1. %MX.1 %MW1..2 %MX0.0x "
      "%MX-1.0 X X8192 D4096 "
      "D0.16 D0. X1.2 MW2 x 5 %MX99999999999999999999.0 M99999999999999999999");
  std::string text;
  do {
    vel::HeapAddress address;
    address.position = 77;
    EXPECT_FALSE(host.parseAddress(text, address)) << text;
    EXPECT_EQ(77U, address.position) << text;
  } while (texts >> text);
  const vel::HeapAddress empty;
  EXPECT_EQ(0xFFFFFFFF, host.place(empty).address);
  EXPECT_EQ(vel::BasicDataType::None, host.addressType(empty));
}

TEST(DeviceMap, DeviceNamesAreSplit) {
  KitHost host;
  const auto split = [&host](const char* text) {
    const vel::JapanComponent parts = host.deviceMemory()->parseComponent(text);
    return parts.device + "," + parts.number + "," + parts.suffix;
  };
  EXPECT_EQ("d,10,.3", split("d10.3"));
  EXPECT_EQ("X,7,", split("X7"));
  EXPECT_EQ("ZR,12,.L", split("ZR12.L"));
  for (const char* none : {"", "%IX0.1", "X", "x.1", "7"}) EXPECT_EQ(",,", split(none)) << none;
}

}  // namespace
