#include "operators/device/device_memory.h"

namespace {

using AddressValidation = DeviceMemoryTest;

TEST_F(AddressValidation, Kinds) {
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

TEST_F(AddressValidation, LocalRanges) {
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

}  // namespace
