// Writes the C of unit tests, apart from that of the program.
#pragma once

#include <string>
#include <vector>

#include "refhost/emit/file_context.h"

namespace refhost {

struct TestTexts {
  std::string fixtures;  // of SETUP and TEARDOWN
  struct Test {
    const UnitSymbol* unit;
    const UnitSymbol* teardown;  // of its file; null for none
    std::string text;
  };
  std::vector<Test> tests;  // in source order
};

class TestWriter {
 public:
  explicit TestWriter(FileContext& file) : file_(file) {}

  TestTexts texts();

 private:
  void appendSetup(const UnitSymbol& setup, std::string& out);

  FileContext& file_;
};

// The function that prepares a test of the file with this SETUP, null for none. Empty when there is
// nothing to prepare.
std::string setupFunction(const Services& services, const SymbolNames& names,
                          const UnitSymbol* setup);

}  // namespace refhost
