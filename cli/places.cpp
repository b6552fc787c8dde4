#include "cli/places.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/excerpt.h"
#include "cli/failure.h"
#include "cli/value_parts.h"
#include "refhost/spelling.h"

namespace velc {

namespace {

using hostkit::equalIgnoringCase;
using refhost::ProgramVariable;
using refhost::Session;
using refhost::ValueShape;

// The position of the next character that begins a further part of a path, from `from` on.
std::size_t nextPart(std::string_view name, std::size_t from) {
  return std::min(name.find_first_of(".[", from), name.size());
}

std::string asking(const std::string& suggestion) {
  return suggestion.empty() ? std::string() : fmt::format("; did you mean '{}'?", suggestion);
}

// Why the path leads to nothing behind `part`.
std::string deadEnd(const ProgramVariable& part, std::string_view rest) {
  const ValueShape* const shape = part.shape.get();
  if (rest.front() == '.' && shape != nullptr && shape->isStructure) {
    const std::string_view member = rest.substr(1, nextPart(rest, 1) - 1);
    refhost::Spelling spelling(member);
    for (const ValueShape::Member& each : shape->members) spelling.offer(each.name);
    return fmt::format("'{}' has no member '{}'{}", part.name, member, asking(spelling.best()));
  }
  if (rest.front() == '[' && shape != nullptr && shape->element != nullptr) {
    if (rest.find(']') == std::string::npos)
      return fmt::format("{} has no ']'", inQuotes(part.name + std::string(rest)));
    return fmt::format("'{}' has no element {}", part.name, rest.substr(0, rest.find(']') + 1));
  }
  return fmt::format("'{}' has no part {}", part.name, inQuotes(rest));
}

// Blanks may stand at the ends of a name and beside its dots, brackets and commas.
std::string withoutBlanks(std::string_view name) {
  constexpr std::string_view kMarks = ".,[]";
  std::string text;
  bool apart = false;  // blanks follow `text`
  for (const char c : name) {
    if (c == ' ' || c == '\t') {
      apart = true;
      continue;
    }
    const bool beside = text.empty() || kMarks.find(c) != std::string::npos ||
                        kMarks.find(text.back()) != std::string::npos;
    if (apart && !beside) text += ' ';
    apart = false;
    text += c;
  }
  return text;
}

bool standsInAll(const ProgramVariable& variable) {
  return variable.settable && variable.type != vel::BasicDataType::Pointer;
}

}  // namespace

Places::Places(const Session& session)
    : session_(session),
      variables_(session.programVariables(Session::Instances::Shown)),
      qualified_(!session.taskTable().empty() || session.programs().size() > 1) {
  for (ProgramVariable& global : session.globalVariables(Session::Instances::Shown)) {
    variables_.push_back(std::move(global));
  }
  qualifiedNames_.reserve(variables_.size());
  for (const ProgramVariable& variable : variables_) {
    byName_[variable.name].push_back(&variable);
    if (variable.program.empty()) continue;
    qualifiedNames_.push_back(variable.qualifiedName());
    byName_[qualifiedNames_.back()].push_back(&variable);
  }
}

bool Places::find(std::string_view text, ProgramVariable& place, std::string& error) const {
  const std::string spelt = withoutBlanks(text);
  const std::string_view name = spelt;
  std::vector<ProgramVariable> found;
  std::string reason;
  for (std::size_t end = nextPart(name, 0);; end = nextPart(name, end + 1)) {
    const auto known = byName_.find(name.substr(0, end));
    const Found none;
    for (const ProgramVariable* const variable : known == byName_.end() ? none : known->second) {
      PartAt part = partAt(*variable, name.substr(end));
      const bool global = variable->program.empty();
      if (!part.rest.empty() || part.variable.shape == nullptr) {
        reason = part.rest.empty() ? fmt::format("'{}' has no value", name)
                                   : deadEnd(part.variable, part.rest);
      } else if (global || found.empty() || !found[0].program.empty()) {
        if (global) found.clear();
        found.push_back(std::move(part.variable));
      }
    }
    if (end == name.size()) break;
  }
  if (found.size() > 1) {
    error = fmt::format("'{}' is ambiguous; write {} or {}", name, found[0].qualifiedName(),
                        found[1].qualifiedName());
    return false;
  }
  if (!found.empty()) {
    place = std::move(found[0]);
    return true;
  }
  if (session_.addressVariable(std::string(name), place)) return true;
  error = reason.empty() ? unknown(name) : reason;
  return false;
}

std::string Places::unknown(std::string_view name) const {
  // The whole name is compared first, since the name of a program can be part of it.
  for (const std::size_t end : {name.size(), name.find('['), name.find('.')}) {
    const std::string_view wanted = name.substr(0, end);
    refhost::Spelling spelling(wanted);
    for (const ProgramVariable& variable : variables_) {
      if (variable.shape != nullptr) spelling.offer(variable.name);
    }
    for (const std::string& each : qualifiedNames_) spelling.offer(each);
    if (spelling.best().empty()) continue;
    return fmt::format("there is no variable {}{}", inQuotes(wanted),
                       asking(spelling.best() + std::string(name.substr(wanted.size()))));
  }
  return fmt::format("there is no variable or device address {}", inQuotes(name));
}

ProgramVariable Places::named(std::string_view option, std::string_view name) const {
  ProgramVariable place;
  std::string error;
  if (!find(name, place, error)) throw Failure(fmt::format("{}: {}", option, error));
  return place;
}

std::vector<ProgramVariable> Places::matching(std::string_view option,
                                              std::string_view pattern) const {
  std::vector<ProgramVariable> result;
  const bool all = pattern == "*";
  const bool allOfOne = pattern.size() > 2 && pattern.substr(pattern.size() - 2) == ".*";
  const std::string_view owner = allOfOne ? pattern.substr(0, pattern.size() - 2) : pattern;
  if (!all && !allOfOne) return {named(option, pattern)};
  for (const ProgramVariable& variable : variables_) {
    const bool belongs = all || equalIgnoringCase(variable.program, owner);
    if (belongs && standsInAll(variable)) result.push_back(variable);
  }
  if (result.empty() && allOfOne) result.push_back(named(option, owner));
  return result;
}

std::string Places::displayName(const ProgramVariable& place) const {
  return qualified_ ? place.qualifiedName() : place.name;
}

namespace {

void appendElementary(const ProgramVariable& part, std::vector<ProgramVariable>& result) {
  const ValueShape& shape = *part.shape;
  if (!shape.hasParts()) return result.push_back(part);
  for (std::int64_t i = 0; i < partCount(shape); ++i) appendElementary(partNumber(part, i), result);
}

}  // namespace

std::vector<ProgramVariable> elementaryParts(const ProgramVariable& place) {
  std::vector<ProgramVariable> result;
  appendElementary(place, result);
  return result;
}

}  // namespace velc
