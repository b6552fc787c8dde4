#include "refhost/neighbours.h"

#include <algorithm>
#include <string_view>

#include "hostkit/folding.h"
#include "refhost/syntax/parser.h"

namespace refhost {
namespace {

std::string folded(std::string_view name) {
  std::string lower(name);
  std::transform(lower.begin(), lower.end(), lower.begin(), hostkit::toLower);
  return lower;
}

// After a syntax error leaves can be missing.
void addName(const ASTNode& node, int leaf, std::set<std::string>& names) {
  const ASTNode* const name = leaf < node.leavesCount() ? node.leaf(leaf) : nullptr;
  if (name == nullptr || kindOf(*name) != NodeKind::Text) return;
  names.insert(folded(static_cast<const Text&>(*name).text()));
}

void addVariables(const VarBlock& block, std::set<std::string>& names) {
  for (int i = 0; i < block.leavesCount(); ++i) {
    const ASTNode* const declaration = block.leaf(i);
    if (declaration == nullptr) continue;
    for (int n = VarDecl::kFirstName; n < declaration->leavesCount(); ++n) {
      addName(*declaration, n, names);
    }
  }
}

void addType(const ASTNode& declaration, std::set<std::string>& names) {
  addName(declaration, 0, names);
  const ASTNode* const spec = declaration.leavesCount() > 1 ? declaration.leaf(1) : nullptr;
  if (spec == nullptr || spec->type() != vel::ASTType::EnumTypeSpec) return;
  for (int i = 0; i < spec->leavesCount(); ++i) {
    if (spec->leaf(i) != nullptr) addName(*spec->leaf(i), 0, names);
  }
}

// The names that a file declares for others.
std::set<std::string> declaredNames(const std::string& path, const std::string& text) {
  SourceManager sources;
  Tree tree;
  Diagnostics messages;
  sources.add(path, text);
  parse(sources, 0, tree, messages);
  std::set<std::string> names;
  for (const Unit* const unit : tree.units) names.insert(folded(unit->name()));
  for (const Node* const type : tree.types) addType(*type, names);
  for (const VarBlock* const block : tree.globals) addVariables(*block, names);
  return names;
}

bool intersect(const std::set<std::string>& a, const std::set<std::string>& b) {
  return std::any_of(a.begin(), a.end(), [&b](const auto& name) { return b.count(name) != 0; });
}

}  // namespace

const Neighbours::Names& Neighbours::declaredIn(const std::string& path, const std::string& text) {
  File& file = known_[path];
  const std::size_t digest = std::hash<std::string>()(text);
  if (!file.known || file.digest != digest) file = {digest, true, declaredNames(path, text)};
  return file.names;
}

bool Neighbours::declares(const std::string& path, std::string_view name) {
  std::string text;
  return read_(path, text) && declaredIn(path, text).count(folded(name)) != 0;
}

std::vector<std::string> Neighbours::filesFor(Names missing, Program& program,
                                              const std::vector<std::string>& candidates) {
  std::vector<std::string> added;
  for (const std::string& candidate : candidates) {
    if (missing.empty()) break;
    std::string text;
    if (program.paths.count(candidate) != 0 || !read_(candidate, text)) continue;
    const Names& names = declaredIn(candidate, text);
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
  program.add(path, declaredIn(path, own));
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
