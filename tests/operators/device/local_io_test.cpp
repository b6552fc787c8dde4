#include "operators/device/local_io.h"

#include <stdexcept>

#include "operators/device/device_memory.h"

using LocalIo = DeviceMemoryTest;

// The bounds found, "~" where one is left alone; "!" for a text that has not all of them.
TEST_F(LocalIo, Parse) {
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
