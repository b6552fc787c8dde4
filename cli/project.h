// velops.json: which files are a program, and how it is checked.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/common_options.h"
#include "refhost/diagnostic.h"
#include "refhost/syntax/source.h"

namespace velc {

inline constexpr const char* kProjectFile = "velops.json";

// The velops.json in `folder` or the nearest folder above it; empty for none.
std::filesystem::path findProject(const std::filesystem::path& folder);

// One that has been read.
struct Project {
  std::filesystem::path path;  // absolute
  // Absolute, each once, those of folders and patterns in the order of their names.
  std::vector<std::string> files;
  // The settings that velops.json can have; the others are the defaults.
  CommonOptions options;

  // Its faults, whose places are in `source`, and which have no codes. With faults, what is
  // misspelt or missing has its default above.
  refhost::SourceManager source;
  std::vector<refhost::Diagnostic> faults;
  // So many faults at the end are of files of `plugin` and `addOns`, which do not matter where no
  // plugin is loaded or the command line names it.
  std::size_t libraryFaults = 0;
};

// Reads the file `path`, which is absolute, or `text` in its place. Throws Failure if the file
// cannot be read.
Project readProject(const std::filesystem::path& path);
// The `unsaved` files count as if they were on disk.
Project readProject(const std::filesystem::path& path, std::string text,
                    const std::vector<std::string>& unsaved = {});

}  // namespace velc
