// The options that commands share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "cli/colours.h"
#include "refhost/diagnostic.h"
#include "refhost/session.h"

namespace velc {

// Sarif is one document for all diagnostics, so only commands that print them once accept it.
enum class DiagnosticsForm { Text, Json, Sarif };

// The sizes of areas of device memory are multiples of this, and so small that 32 bits can number
// every bit.
inline constexpr std::uint32_t kAreaUnit = 8;
inline constexpr std::uint32_t kLargestArea = 16U << 20;

inline constexpr std::size_t kMostErrors = std::size_t{1} << 30;

// The plugin or an add-on that a project names; an empty path is the plugin installed with velc.
struct ProjectLibrary {
  std::string path;
  refhost::SourceRange range;  // in velops.json, where it is named
  std::string place;           // its begin, "velops.json:3:12"
};

struct CommonOptions {
  // The plugin and its add-ons; when empty, those of the project.
  std::vector<std::string> plugins;
  // The same for the project; none is the plugin installed with velc.
  std::vector<ProjectLibrary> projectPlugins;
  std::string localIo;
  refhost::Notation notation = refhost::Notation::Iec;
  refhost::MemorySizes memory;
  DiagnosticsForm diagnostics = DiagnosticsForm::Text;
  refhost::WarningChoice warnings;
  std::size_t maxErrors = 0;  // that are printed, up to kMostErrors; 0: all
  ColourChoice colour = ColourChoice::Auto;
};

// The plugin and its add-ons; throws Failure when there is none.
std::vector<std::string> librariesOf(const CommonOptions& common);
// The project's library with whose name the text, as of Session::start(), begins; null if the
// project names none that is used.
const ProjectLibrary* libraryAtFault(const CommonOptions& common, const std::string& error);
// Throws Failure when there is no plugin.
refhost::Options sessionOptions(const CommonOptions& common);

}  // namespace velc
