// The options that commands share.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cli/colours.h"
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
  ColourChoice colour = ColourChoice::Auto;
};

}  // namespace velc
