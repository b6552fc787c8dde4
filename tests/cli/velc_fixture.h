// Runs velc in a folder of its own.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "cli/process.h"
#include "cli/temporary_folder.h"

namespace velc {

struct Outcome {
  int code;
  std::string out;
  std::string err;
};

class Velc : public testing::Test {
 protected:
  // `arguments`, and the commands to stand `before` velc, as a shell takes them.
  Outcome velc(const std::string& arguments, const std::string& before = "") const {
    const TerminationGuard guard;
    const std::string line =
        "cd " + folder.path().native() + "; export TMPDIR=.; " + before + VELC " " + arguments;
    const ProcessResult result = runProcess({"sh", "-c", line + " 2>stderr"}, guard);
    return {result.end == ProcessResult::End::Exited ? result.code : -1, result.output,
            read("stderr")};
  }
  void write(const char* name, const std::string& text) const {
    std::ofstream(folder.path() / name, std::ios::binary) << text;
  }
  std::string read(const char* name) const {
    std::ifstream file(folder.path() / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  void writeProgram(const char* name, const std::string& variables, const std::string& body) const {
    write(name, "PROGRAM p\nVAR\n" + variables + "\nEND_VAR\n" + body + "\nEND_PROGRAM\n");
  }

  TemporaryFolder folder;
};

}  // namespace velc
