#include "refhost/neighbours.h"

#include <algorithm>
#include <string_view>

#include "hostkit/folding.h"

namespace refhost {
namespace {

std::string folded(std::string_view name) {
  std::string lower(name);
  std::transform(lower.begin(), lower.end(), lower.begin(), hostkit::toLower);
  return lower;
}

bool intersect(const std::set<std::string>& a, const std::set<std::string>& b) {
  return std::any_of(a.begin(), a.end(), [&b](const auto& name) { return b.count(name) != 0; });
}

}  // namespace

const Neighbours::File& Neighbours::declaredIn(const std::string& path, const std::string& text) {
  File& file = known_[path];
  const std::size_t digest = std::hash<std::string>()(text);
  if (file.known && file.digest == digest) return file;
  file = {digest, true, declarationsOf(path, text), {}};
  for (const FileDeclaration& declaration : file.declarations) {
    if (declaration.isShared()) file.names.insert(folded(declaration.name));
  }
  return file;
}

bool Neighbours::declares(const std::string& path, std::string_view name) {
  std::string text;
  return read_(path, text) && declaredIn(path, text).names.count(folded(name)) != 0;
}

const std::vector<FileDeclaration>* Neighbours::declarationsIn(const std::string& path) {
  std::string text;
  return read_(path, text) ? &declaredIn(path, text).declarations : nullptr;
}

std::vector<const FileDeclaration*> Neighbours::declaredBeside(
    const std::vector<std::string>& program, const std::vector<std::string>& candidates) {
  Program known;
  std::string text;
  for (const std::string& file : program) {
    if (read_(file, text)) known.add(file, declaredIn(file, text).names);
  }
  std::vector<const FileDeclaration*> all;
  for (const std::string& candidate : candidates) {
    // A candidate may be there twice.
    if (!known.paths.insert(candidate).second || !read_(candidate, text)) continue;
    const File& file = declaredIn(candidate, text);
    if (intersect(known.declared, file.names)) continue;
    for (const FileDeclaration& declaration : file.declarations) {
      if (declaration.isShared()) all.push_back(&declaration);
    }
  }
  return all;
}

std::vector<std::string> Neighbours::filesFor(Names missing, Program& program,
                                              const std::vector<std::string>& candidates) {
  std::vector<std::string> added;
  for (const std::string& candidate : candidates) {
    if (missing.empty()) break;
    std::string text;
    if (program.paths.count(candidate) != 0 || !read_(candidate, text)) continue;
    const Names& names = declaredIn(candidate, text).names;
    if (!intersect(missing, names) || intersect(program.declared, names)) continue;
    program.add(candidate, names);
    added.push_back(candidate);
    for (const std::string& name : names) missing.erase(name);
  }
  return added;
}

std::vector<std::string> Neighbours::analyse(Session& session, const std::string& path,
                                             const std::vector<std::string>& candidates) {
  std::vector<std::string> files = {path};
  Program program;
  std::string own;
  if (!read_(path, own)) return {};
  program.add(path, declaredIn(path, own).names);
  for (;;) {
    session.restart();
    for (const std::string& file : files) {
      std::string text;
      if (!read_(file, text)) return {};
      session.sources().add(file, std::move(text));
    }
    session.analyse(true);
    Names missing;
    for (const std::string& name : session.missingNames()) missing.insert(folded(name));
    const std::vector<std::string> added = filesFor(std::move(missing), program, candidates);
    if (added.empty()) return files;
    files.insert(files.end(), added.begin(), added.end());
  }
}

}  // namespace refhost
