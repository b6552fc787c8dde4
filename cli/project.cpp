#include "cli/project.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <iterator>
#include <set>

#include "cli/excerpt.h"
#include "cli/failure.h"
#include "cli/local_io.h"
#include "cli/located_json.h"
#include "cli/source_files.h"
#include "cli/source_patterns.h"
#include "core/case_folding.h"
#include "refhost/spelling.h"

namespace velc {

namespace {

namespace fs = std::filesystem;
using Kind = LocatedJson::Kind;

const char* kindName(Kind kind) {
  switch (kind) {
    case Kind::Null:
      return "null";
    case Kind::Flag:
      return "true or false";
    case Kind::Number:
      return "a number";
    case Kind::Text:
      return "a text";
    case Kind::List:
      return "a list";
    case Kind::Object:
      return "an object";
  }
  return "";
}

std::string suggestion(const refhost::Spelling& spelling) {
  return spelling.best().empty() ? "" : fmt::format(", did you mean '{}'?", spelling.best());
}

class ProjectReader {
 public:
  ProjectReader(Project& project, const std::vector<std::string>& unsaved)
      : project_(project), unsaved_(unsaved), folder_(project.path.parent_path()) {}

  void read() {
    LocatedJson root;
    JsonFault fault;
    if (!parseLocated(project_.source.text(0), root, fault)) {
      return say(fault.span, "this is not JSON: " + fault.text);
    }
    readObject(root, {{"$schema", &ProjectReader::readSchema},
                      {"sources", &ProjectReader::readSources},
                      {"localio", &ProjectReader::readLocalIo},
                      {"notation", &ProjectReader::readNotation},
                      {"memory", &ProjectReader::readMemory},
                      {"warnings", &ProjectReader::readWarnings},
                      {"plugin", &ProjectReader::readPlugin},
                      {"addOns", &ProjectReader::readAddOns}});
    if (!hasSources_ && root.kind == Kind::Object) addSources(root.span, ".");
    project_.libraryFaults = libraryFaults_.size();
    std::move(libraryFaults_.begin(), libraryFaults_.end(), std::back_inserter(project_.faults));
  }

 private:
  struct Row {
    const char* key;
    void (ProjectReader::*read)(const LocatedJson& value);
  };

  static refhost::SourceRange rangeOf(TextSpan span) {
    return {vel::TextLocation(0, static_cast<std::uint32_t>(span.begin)),
            static_cast<std::uint32_t>(span.end - span.begin)};
  }
  static refhost::Diagnostic faultAt(TextSpan where, const std::string& text) {
    refhost::Diagnostic fault;
    fault.range = rangeOf(where);
    fault.text = text;
    return fault;
  }
  void say(TextSpan where, const std::string& text) {
    project_.faults.push_back(faultAt(where, text));
  }
  bool expect(const LocatedJson& value, Kind kind) {
    if (value.kind == Kind::Text && value.text.find('\0') != std::string::npos) {
      say(value.span, "this contains a zero character");
      return false;
    }
    if (value.kind == kind) return true;
    say(value.span,
        fmt::format("{} stands here, but {} is needed", kindName(value.kind), kindName(kind)));
    return false;
  }
  template <typename Use>
  void forEachText(const LocatedJson& list, Use use) {
    if (!expect(list, Kind::List)) return;
    for (const auto& member : list.members) {
      if (expect(member.value, Kind::Text)) use(member.value);
    }
  }

  void readObject(const LocatedJson& object, std::initializer_list<Row> rows) {
    if (!expect(object, Kind::Object)) return;
    std::set<std::string> seen;
    for (const auto& [key, span, value] : object.members) {
      if (!seen.insert(key).second) {
        say(span, fmt::format("'{}' stands here for the second time", printable(key)));
        continue;
      }
      const Row* known = nullptr;
      refhost::Spelling spelling(key);
      for (const Row& row : rows) {
        spelling.offer(row.key);
        if (key == row.key) known = &row;
      }
      if (known != nullptr) {
        (this->*known->read)(value);
      } else {
        say(span, fmt::format("unknown key '{}'{}", printable(key), suggestion(spelling)));
      }
    }
  }

  void readSchema(const LocatedJson& value) { expect(value, Kind::Text); }

  void readSources(const LocatedJson& value) {
    hasSources_ = true;
    if (value.kind == Kind::List && value.members.empty()) say(value.span, "there is no source");
    forEachText(value, [this](const LocatedJson& name) { addSources(name.span, name.text); });
  }
  void addSources(TextSpan where, const std::string& name) {
    if (name.empty()) return say(where, "this names no file; '.' is the folder of velops.json");
    std::error_code unknown;
    const fs::path path = (folder_ / name).lexically_normal();
    std::vector<std::string> found = unsavedSources(name, path);
    const bool sorts = !found.empty();
    const bool exists = fs::exists(path, unknown);
    if (!exists && !isPattern(name) && found.empty()) {
      return say(where, fmt::format("there is no file or folder '{}'", printable(name)));
    }
    try {
      std::vector<std::string> saved;
      if (exists) {
        saved = sourceFiles({path.native()});
      } else if (isPattern(name)) {
        saved = filesMatching(folder_, name);
      }
      found.insert(found.end(), saved.begin(), saved.end());
    } catch (const Failure& failure) {
      if (found.empty()) return say(where, failure.what());
    }
    if (sorts) {
      std::sort(found.begin(), found.end(),
                [](const fs::path& one, const fs::path& other) { return one < other; });
    }
    found.erase(std::remove(found.begin(), found.end(), project_.path.native()), found.end());
    if (found.empty()) say(where, fmt::format("no file matches '{}'", printable(name)));
    for (const std::string& file : found) {
      if (known_.insert(fs::weakly_canonical(file, unknown)).second) project_.files.push_back(file);
    }
  }

  std::vector<std::string> unsavedSources(const std::string& name, const fs::path& path) const {
    std::error_code unknown;
    const bool literal = fs::exists(path, unknown);
    std::vector<std::string> found;
    for (const std::string& file : unsaved_) {
      const bool source = vel::equalIgnoringCase(fs::path(file).extension().native(), ".st");
      const bool matches = isPattern(name) && !literal
                               ? wouldMatch(folder_, name, file)
                               : file == path || (source && wouldMatch(path, "**/*", file));
      if (matches) found.push_back(file);
    }
    return found;
  }

  void readLocalIo(const LocatedJson& value) {
    if (!expect(value, Kind::Text)) return;
    const std::string fault = checkLocalIo(value.text);
    if (!fault.empty()) return say(value.span, fault);
    project_.options.localIo = value.text;
  }

  void readNotation(const LocatedJson& value) {
    if (!expect(value, Kind::Text)) return;
    if (value.text != "iec" && value.text != "letters") {
      return say(value.span, fmt::format("the notation is 'iec' or 'letters', not '{}'",
                                         printable(value.text)));
    }
    project_.options.notation =
        value.text == "iec" ? refhost::Notation::Iec : refhost::Notation::Letters;
  }

  void readMemory(const LocatedJson& value) {
    readObject(value, {{"markers", &ProjectReader::readMarkers},
                       {"inputs", &ProjectReader::readInputs},
                       {"outputs", &ProjectReader::readOutputs}});
  }
  void readMarkers(const LocatedJson& value) { readArea(value, project_.options.memory.markers); }
  void readInputs(const LocatedJson& value) { readArea(value, project_.options.memory.inputs); }
  void readOutputs(const LocatedJson& value) { readArea(value, project_.options.memory.outputs); }
  void readArea(const LocatedJson& value, std::uint32_t& bytes) {
    if (!expect(value, Kind::Number)) return;
    const bool fits = value.number >= kAreaUnit && value.number <= kLargestArea &&
                      std::fmod(value.number, kAreaUnit) == 0;
    if (!fits) {
      return say(value.span, fmt::format("an area has from {} to {} bytes, a multiple of {}",
                                         kAreaUnit, kLargestArea, kAreaUnit));
    }
    bytes = static_cast<std::uint32_t>(value.number);
  }

  void readWarnings(const LocatedJson& value) {
    readObject(value, {{"warn", &ProjectReader::readWarn},
                       {"noWarn", &ProjectReader::readNoWarn},
                       {"werror", &ProjectReader::readWerror},
                       {"maxErrors", &ProjectReader::readMaxErrors}});
    // Behind those that are asked for, so that a warning that is both is not shown.
    for (const LocatedJson* name : refused_) choose(*name, false);
  }
  void readWarn(const LocatedJson& value) {
    forEachText(value, [this](const LocatedJson& name) { choose(name, true); });
  }
  void readNoWarn(const LocatedJson& value) {
    forEachText(value, [this](const LocatedJson& name) { refused_.push_back(&name); });
  }
  void choose(const LocatedJson& name, bool shown) {
    if (project_.options.warnings.choose(name.text, shown)) return;
    refhost::Spelling spelling(name.text);
    for (const auto& group : refhost::warningGroups()) spelling.offer(group.name);
    say(name.span, fmt::format("'{}' is neither the code of a warning nor a group of them{}",
                               printable(name.text), suggestion(spelling)));
  }
  void readWerror(const LocatedJson& value) {
    if (expect(value, Kind::Flag)) project_.options.warnings.asErrors = value.flag;
  }
  void readMaxErrors(const LocatedJson& value) {
    if (!expect(value, Kind::Number)) return;
    if (value.number < 1 || value.number > kMostErrors || std::fmod(value.number, 1) != 0) {
      return say(value.span, fmt::format("a number from 1 to {} is needed", kMostErrors));
    }
    project_.options.maxErrors = static_cast<std::size_t>(value.number);
  }

  ProjectLibrary libraryNamed(const LocatedJson& name) {
    std::error_code unknown;
    const fs::path path = (folder_ / name.text).lexically_normal();
    if (!fs::is_regular_file(path, unknown)) {
      libraryFaults_.push_back(
          faultAt(name.span, fmt::format("there is no file '{}'", printable(name.text))));
    }
    const refhost::SourceRange range = rangeOf(name.span);
    const refhost::LineColumn at = project_.source.position(range.begin);
    return {path, range, fmt::format("{}:{}:{}", project_.source.path(0), at.line, at.column)};
  }
  std::vector<ProjectLibrary>& libraries() {
    // The first one is the plugin.
    if (project_.options.projectPlugins.empty()) project_.options.projectPlugins.emplace_back();
    return project_.options.projectPlugins;
  }
  void readPlugin(const LocatedJson& value) {
    if (expect(value, Kind::Text)) libraries().front() = libraryNamed(value);
  }
  void readAddOns(const LocatedJson& value) {
    forEachText(value,
                [this](const LocatedJson& name) { libraries().push_back(libraryNamed(name)); });
  }

  Project& project_;
  const std::vector<std::string>& unsaved_;
  fs::path folder_;
  bool hasSources_ = false;
  std::set<fs::path> known_;                 // sources
  std::vector<const LocatedJson*> refused_;  // names of warnings
  std::vector<refhost::Diagnostic> libraryFaults_;
};

}  // namespace

fs::path findProject(const fs::path& folder) {
  std::error_code unknown;
  for (fs::path at = fs::absolute(folder, unknown).lexically_normal();; at = at.parent_path()) {
    // Also one that cannot be read, such as a link that leads nowhere, which is a fault.
    const fs::file_type type = fs::symlink_status(at / kProjectFile, unknown).type();
    if (type == fs::file_type::regular || type == fs::file_type::symlink ||
        type == fs::file_type::directory) {
      return at / kProjectFile;
    }
    if (at == at.parent_path()) return {};
  }
}

Project readProject(const fs::path& path, std::string text,
                    const std::vector<std::string>& unsaved) {
  Project project;
  project.path = path;
  project.source.add(path.lexically_proximate(fs::current_path()), std::move(text));
  ProjectReader(project, unsaved).read();
  return project;
}

Project readProject(const fs::path& path) {
  refhost::SourceManager file;
  loadSource(file, path);
  return readProject(path, std::string(file.text(0)));
}

}  // namespace velc
