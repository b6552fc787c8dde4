// The options of `velc run`.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace velc {

struct RunOptions {
  std::vector<std::string> files;
  bool each = false;                  // each file is a program of its own
  std::vector<std::string> settings;  // NAME=VALUE
  std::vector<std::string> shown;     // global variables and device addresses
  std::string retained;               // file of retained variables; empty for none
  bool traceIo = false;
  std::string compiler = "cc";
  std::int64_t scans = 1;
  std::int64_t cycle = 10;           // milliseconds from one scan to the next
  std::chrono::seconds timeout{60};  // of compiling, and of the program
};

// Adds the options of commands that compile C.
void addCompilerOptions(CLI::App& command, std::string& compiler, std::chrono::seconds& timeout,
                        const char* timed);

// Adds all of them but the files, and binds them to `options`.
void addRunOptions(CLI::App& command, RunOptions& options);

}  // namespace velc
