#include "lsp/workspace.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <type_traits>

#include "core/case_folding.h"
#include "lsp/diagnostics.h"

namespace lsp {

namespace {

namespace fs = std::filesystem;

bool contains(const std::vector<std::string>& files, const std::string& path) {
  return std::find(files.begin(), files.end(), path) != files.end();
}

bool isSource(const fs::path& path) {
  return vel::equalIgnoringCase(path.extension().native(), ".st") &&
         path.filename().native().front() != '.';
}

// Those on disk that `Iterator` comes to.
template <typename Iterator>
std::vector<std::string> sourcesOnDisk(const std::string& folder) {
  std::vector<std::string> files;
  std::error_code error;
  Iterator entry(folder, fs::directory_options::skip_permission_denied, error);
  for (; !error && entry != Iterator(); entry.increment(error)) {
    std::error_code unknown;
    const fs::path& path = entry->path();
    if constexpr (std::is_same_v<Iterator, fs::recursive_directory_iterator>) {
      if (path.filename().native().front() == '.') entry.disable_recursion_pending();
    }
    if (isSource(path) && entry->is_regular_file(unknown)) files.push_back(path);
  }
  return files;
}

bool isBelow(const fs::path& path, const fs::path& folder) {
  const auto ends = std::mismatch(folder.begin(), folder.end(), path.begin(), path.end());
  return ends.first == folder.end();
}

}  // namespace

Workspace::Workspace(const Documents& documents, std::vector<std::string> libraries,
                     Publisher& publisher, Log log)
    : documents_(documents),
      libraries_(std::move(libraries)),
      publisher_(publisher),
      log_(std::move(log)),
      projects_(documents, disk_),
      neighbours_(
          [this](const std::string& path, std::string& text) { return readText(path, text); }) {}

bool Workspace::readText(const std::string& path, std::string& text) {
  const Document* const document = documents_.find(path);
  if (document == nullptr) return disk_.read(path, text);
  text = document->text;
  return true;
}

Workspace::Program Workspace::describe(const std::string& path) {
  Program program;
  program.project = projects_.of(path);
  program.whole = program.project != nullptr &&
                  (contains(program.project->files, path) || program.project->path == path);
  program.path = program.whole ? program.project->path.native() : path;
  return program;
}

Workspace::Program& Workspace::programOf(const std::string& path) {
  Program now = describe(path);
  std::unique_ptr<Program>& known = programs_[now.path];
  if (known == nullptr) {
    known = std::make_unique<Program>(std::move(now));
  } else if (known->project != now.project) {
    known->project = now.project;
    known->waits = true;
  }
  return *known;
}

void Workspace::changed(const std::string& path) {
  if (fs::path(path).filename() == velc::kProjectFile) return refresh();
  programOf(path).waits = true;
  const fs::path folder = fs::path(path).parent_path();
  for (const auto& [name, program] : programs_) {
    const bool beside = !program->whole && fs::path(name).parent_path() == folder;
    if (beside || contains(program->files, path)) program->waits = true;
  }
}

void Workspace::refresh() {
  projects_.forget();
  folders.forget();
  folders_.clear();
  trees_.clear();
  std::vector<const Program*> used;
  for (const auto& [path, document] : documents_.all()) {
    Program& program = programOf(path);
    program.waits = true;
    used.push_back(&program);
  }
  for (auto at = programs_.begin(); at != programs_.end();) {
    const Program* const program = at->second.get();
    if (std::find(used.begin(), used.end(), program) != used.end()) {
      ++at;
      continue;
    }
    publisher_.withdraw(program->path);
    for (auto& [path, engine] : engines_) {
      if (engine.analysed == program) engine.analysed = nullptr;
    }
    at = programs_.erase(at);
  }
  for (auto at = engines_.begin(); at != engines_.end();) {
    const bool isUsed = std::any_of(used.begin(), used.end(), [&](const Program* program) {
      return (program->project != nullptr ? program->project->path.native() : "") == at->first;
    });
    if (!isUsed && faulty_.erase(at->first) != 0) publisher_.withdraw(at->first);
    // A library that could not be used may have been built since.
    at = isUsed && !at->second.libraryFault ? std::next(at) : engines_.erase(at);
  }
}

bool Workspace::waits() const {
  return std::any_of(programs_.begin(), programs_.end(),
                     [](const auto& program) { return program.second->waits; });
}

void Workspace::analyseNext() {
  for (const auto& [path, program] : programs_) {
    if (!program->waits) continue;
    publish(*program);
    return;
  }
}

std::optional<Analysed> Workspace::analysed(Program& program, const std::string& path) {
  if (program.waits) {
    publish(program);
  } else if (engineOf(program).analysed != &program) {
    analyse(program);
  }
  Engine& engine = engineOf(program);
  if (engine.analysed != &program) return std::nullopt;
  const auto file = std::find(program.files.begin(), program.files.end(), path);
  if (file == program.files.end()) return std::nullopt;
  return Analysed(*engine.session, documents_,
                  static_cast<std::uint32_t>(file - program.files.begin()),
                  static_cast<std::uint32_t>(program.files.size()));
}

std::optional<Analysed> Workspace::analysed(const std::string& path) {
  if (documents_.find(path) == nullptr) return std::nullopt;
  return analysed(programOf(path), path);
}

void Workspace::forEachProgram(const std::function<void(const Analysed& analysed)>& use) {
  std::set<const Program*> seen;
  for (const auto& [path, document] : documents_.all()) {
    Program& program = programOf(path);
    if (!seen.insert(&program).second) continue;
    if (const auto found = analysed(program, path)) use(*found);
  }
}

std::optional<Workspace::Invocation> Workspace::programFor(const std::string& path) {
  if (!analysed(path)) return std::nullopt;
  const Program& program = programOf(path);
  Invocation invocation{fs::path(program.path).parent_path(), {}};
  std::vector<std::string>& arguments = invocation.arguments;
  if (program.whole && libraries_.empty()) return invocation;
  // With files, velc leaves a project alone.
  velc::CommonOptions options;
  if (program.project != nullptr) options = program.project->options;
  if (!libraries_.empty()) options.plugins = libraries_;
  for (const std::string& library : velc::librariesOf(options)) {
    arguments.insert(arguments.end(), {"--plugin", fs::absolute(library)});
  }
  if (program.whole) return invocation;
  const auto add = [&arguments](const char* option, std::string value) {
    arguments.insert(arguments.end(), {option, std::move(value)});
  };
  if (!options.localIo.empty()) add("--localio", options.localIo);
  if (options.notation == refhost::Notation::Letters) add("--notation", "letters");
  add("--memory-markers", std::to_string(options.memory.markers));
  add("--memory-inputs", std::to_string(options.memory.inputs));
  add("--memory-outputs", std::to_string(options.memory.outputs));
  arguments.insert(arguments.end(), program.files.begin(), program.files.end());
  return invocation;
}

Workspace::Engine& Workspace::engineOf(const Program& program) {
  const std::string key = program.project != nullptr ? program.project->path.native() : "";
  const auto [known, isNew] = engines_.try_emplace(key);
  Engine& engine = known->second;
  if (isNew || engine.project != program.project) {
    engine = {};
    engine.project = program.project;
    start(engine);
  }
  return engine;
}

void Workspace::start(Engine& engine) {
  velc::CommonOptions options;
  if (engine.project != nullptr) options = engine.project->options;
  if (!libraries_.empty()) options.plugins = libraries_;
  try {
    auto session = std::make_unique<refhost::Session>(velc::sessionOptions(options));
    std::string error;
    if (session->start(error)) {
      engine.session = std::move(session);
      return;
    }
    const velc::ProjectLibrary* const library = velc::libraryAtFault(options, error);
    if (library == nullptr) return log_(error);
    engine.libraryFault.emplace();
    engine.libraryFault->range = library->range;
    engine.libraryFault->text = error;
  } catch (const std::exception& error) {
    log_(error.what());
  }
}

std::vector<std::string> Workspace::sourcesIn(const std::string& folder, Depth depth) {
  const bool below = depth == Depth::Below;
  const auto [known, isNew] = (below ? trees_ : folders_).try_emplace(folder);
  std::vector<std::string>& files = known->second;
  if (!isNew) return files;
  files = below ? sourcesOnDisk<fs::recursive_directory_iterator>(folder)
                : sourcesOnDisk<fs::directory_iterator>(folder);
  for (const auto& [path, document] : documents_.all()) {
    const fs::path parent = fs::path(path).parent_path();
    const bool inside = below ? isBelow(parent, folder) : parent == folder;
    if (inside && isSource(path)) files.push_back(path);
  }
  std::sort(files.begin(), files.end());
  files.erase(std::unique(files.begin(), files.end()), files.end());
  return files;
}

std::vector<std::string> Workspace::filesAround(const std::string& document,
                                                const std::string& path) {
  std::set<std::string> files = {document, path};
  for (const std::string& file : {document, path}) {
    const fs::path folder = fs::path(file).parent_path();
    if (!folder.is_absolute()) continue;
    const auto project = projects_.of(file);
    const std::vector<std::string> found =
        project != nullptr ? sourcesIn(project->path.parent_path(), Depth::Below)
                           : sourcesIn(folder, Depth::Folder);
    files.insert(found.begin(), found.end());
    if (project != nullptr) files.insert(project->files.begin(), project->files.end());
  }
  return {files.begin(), files.end()};
}

void Workspace::forEachOther(const std::string& document, const std::string& path,
                             const Choose& chosen,
                             const std::function<void(const Analysed& analysed)>& use) {
  std::set<std::string> seen = {describe(document).path};
  for (const std::string& file : filesAround(document, path)) {
    std::string text;
    if (!readText(file, text) || !chosen(file, text)) continue;
    Program program = describe(file);
    if (!seen.insert(program.path).second) continue;
    const refhost::Session* const session = analyse(program);
    Engine& engine = engineOf(program);
    engine.analysed = nullptr;
    const auto found = std::find(program.files.begin(), program.files.end(), file);
    if (session == nullptr || found == program.files.end()) continue;
    use(Analysed(*engine.session, documents_,
                 static_cast<std::uint32_t>(found - program.files.begin()),
                 static_cast<std::uint32_t>(program.files.size())));
  }
}

bool Workspace::areOneProject(const std::string& one, const std::string& other) {
  const Program first = describe(one);
  return first.whole && first.path == describe(other).path;
}

std::vector<std::string> Workspace::candidatesFor(const Program& program) {
  const std::string folder = fs::path(program.path).parent_path();
  if (folder.empty()) return {};
  std::vector<std::string> files = sourcesIn(folder, Depth::Folder);
  if (program.project != nullptr) {
    files.insert(files.end(), program.project->files.begin(), program.project->files.end());
  }
  return files;
}

refhost::Session* Workspace::analyse(Program& program) {
  program.waits = false;
  Engine& engine = engineOf(program);
  if (engine.session == nullptr) return nullptr;
  engine.analysed = nullptr;
  if (program.whole) {
    analyseProject(program, *engine.session);
  } else {
    program.files = neighbours_.analyse(*engine.session, program.path, candidatesFor(program));
  }
  engine.analysed = &program;
  return engine.session.get();
}

void Workspace::analyseProject(Program& program, refhost::Session& session) {
  session.restart();
  program.files.clear();
  for (const std::string& file : program.project->files) {
    std::string text;
    if (!readText(file, text)) continue;
    session.sources().add(file, std::move(text));
    program.files.push_back(file);
  }
  session.analyse(true);
}

void Workspace::publish(Program& program) {
  refhost::Session* const session = analyse(program);
  if (program.project != nullptr) publishFaults(engineOf(program));
  std::map<std::string, Json> files;
  if (session != nullptr) {
    const auto count = static_cast<std::uint32_t>(program.files.size());
    files = diagnosticsByFile(Analysed(*session, documents_, 0, count));
  }
  for (auto file = files.begin(); file != files.end();) {
    file = decides(program, file->first) ? std::next(file) : files.erase(file);
  }
  publisher_.withdraw(program.path, [&](const std::string& path) {
    return files.count(path) != 0 || (program.whole && path == program.path);
  });
  for (auto& [path, diagnostics] : files) {
    publisher_.set(program.path, path, std::move(diagnostics));
  }
}

bool Workspace::decides(const Program& program, const std::string& path) {
  if (path == program.path) return true;
  // Without a project each document has its own analysis.
  if (!program.whole) return false;
  const Program own = describe(path);
  return own.path == program.path || (!own.whole && documents_.find(path) == nullptr);
}

void Workspace::publishFaults(const Engine& engine) {
  const velc::Project& project = *engine.project;
  const std::string path = project.path;
  std::vector<refhost::Diagnostic> faults = project.faults;
  const auto isKnown = [&](const refhost::Diagnostic& fault) {
    return fault.range.begin.offset() == engine.libraryFault->range.begin.offset();
  };
  if (engine.libraryFault && std::none_of(faults.begin(), faults.end(), isKnown)) {
    faults.push_back(*engine.libraryFault);
  }
  publisher_.set(path, path, diagnosticsOf(project.source, faults, documents_.client));
  if (faults.empty()) {
    faulty_.erase(path);
  } else if (faulty_.insert(path).second) {
    log_(path + " has faults: settings and sources that it does not name correctly are not used");
  }
}

}  // namespace lsp
