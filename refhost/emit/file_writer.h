// Writes a program as one C file, and the header of it.
#pragma once

#include <string>

#include "refhost/emit/file_context.h"
#include "refhost/emit/test_writer.h"

namespace refhost {

class FileWriter {
 public:
  // The program of `services` must have been analysed. text() sets `names`. With `lines` the C
  // names the lines of the sources. `header` is the path by which the C file includes a header that
  // has its declarations, so that other C files can use functions and variables; empty for none.
  FileWriter(Services& services, const SourceManager& sources, SymbolNames& names,
             Diagnostics& messages, bool lines = false, std::string header = {});

  // The C file of the program. Reports an error for each call for which its operator generates
  // nothing. Where the C names lines, it needs withOwnLines().
  std::string text();
  // The header, after text().
  std::string headerText();
  // The unit tests, which are no part of that file. Complete once text() has run.
  const TestTexts& tests() const { return tests_; }
  const std::vector<AssertionSite>& assertions() const { return file_.assertions; }

 private:
  std::string declarations();

  SymbolNames& names_;
  FileContext file_;
  const std::string header_;
  TestTexts tests_;
};

}  // namespace refhost
