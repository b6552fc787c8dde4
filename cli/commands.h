// The commands and their options. Each command returns an ExitCode and may throw Failure.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "refhost/session.h"

namespace velc {

// Sarif is one document for all diagnostics, so only commands that print them once accept it.
enum class DiagnosticsForm { Text, Json, Sarif };

struct CommonOptions {
  // The plugin and its add-ons; when empty, the plugin installed with velc.
  std::vector<std::string> plugins;
  std::string localIo;
  refhost::Notation notation = refhost::Notation::Iec;
  refhost::MemorySizes memory;
  DiagnosticsForm diagnostics = DiagnosticsForm::Text;
  refhost::WarningChoice warnings;
  std::size_t maxErrors = 0;  // that are printed; 0: all
};

struct OperatorsOptions {
  std::vector<std::string> names;  // empty: all
  bool detailed = false;
  bool json = false;
};

struct TranslateOptions {
  std::vector<std::string> files;
  std::string output = "-";  // "-": standard output
  bool callTree = false;     // print the call tree instead of the C to standard output
};

struct RunOptions {
  std::vector<std::string> files;
  std::vector<std::string> settings;  // NAME=VALUE
  std::vector<std::string> shown;     // global variables and device addresses
  std::string retained;               // file of retained variables; empty for none
  bool traceIo = false;
  std::string compiler = "cc";
  std::int64_t scans = 1;
  std::int64_t cycle = 10;           // milliseconds from one scan to the next
  std::chrono::seconds timeout{60};  // of compiling, and of the program
};

int listOperators(const CommonOptions& common, const OperatorsOptions& options);
int check(const CommonOptions& common, const std::vector<std::string>& files);
int translate(const CommonOptions& common, const TranslateOptions& options);
int run(const CommonOptions& common, const RunOptions& options);
// `topics` are message codes and operator names; when empty, lists the codes. Loads libraries
// only for names that velc itself does not know.
int explain(const CommonOptions& common, const std::vector<std::string>& topics);

}  // namespace velc
