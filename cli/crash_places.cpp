#include "cli/crash_places.h"

#include <fmt/format.h>

#include <charconv>
#include <cstring>
#include <optional>

#include "cli/excerpt.h"
#include "cli/failure.h"
#include "cli/process.h"

namespace velc {

namespace {

constexpr std::chrono::seconds kTimeout{60};
constexpr std::size_t kMostShown = 8;

std::vector<std::string> addressesIn(std::string_view report) {
  std::vector<std::string> texts;
  for (std::uint64_t address = 0; report.size() >= sizeof address;) {
    std::memcpy(&address, report.data(), sizeof address);
    texts.push_back(fmt::format("{:#x}", address));
    report.remove_prefix(sizeof address);
  }
  return texts;
}

// True if `path` is `name`, perhaps with the compiler's folder before it.
bool isPathOf(std::string_view path, std::string_view name) {
  if (path.size() < name.size() || path.substr(path.size() - name.size()) != name) return false;
  return path.size() == name.size() || path[path.size() - name.size() - 1] == '/';
}

std::optional<std::uint32_t> fileAt(const refhost::SourceManager& sources, std::string_view path) {
  std::optional<std::uint32_t> found;
  for (int i = 0; i < sources.count(); ++i) {
    const auto file = static_cast<std::uint32_t>(i);
    const std::string& name = sources.path(file);
    const bool longer = !found || name.size() > sources.path(*found).size();
    if (longer && isPathOf(path, name)) found = file;
  }
  return found;
}

// Parses `path:line`, behind which addr2line may write more.
std::optional<SourcePlace> placeIn(const refhost::SourceManager& sources, std::string_view text) {
  const std::size_t colon = text.rfind(':');
  if (colon == std::string_view::npos) return std::nullopt;
  SourcePlace place;
  const auto parsed =
      std::from_chars(text.data() + colon + 1, text.data() + text.size(), place.line);
  const auto file = fileAt(sources, text.substr(0, colon));
  if (parsed.ec != std::errc() || place.line == 0 || !file) return std::nullopt;
  place.file = *file;
  return place;
}

std::string placeText(const refhost::Session& session, const SourcePlace& place) {
  const refhost::SourceManager& sources = session.sources();
  const std::string unit = session.unitAt(place.file, place.line);
  return fmt::format("{}:{}{}", printable(sources.path(place.file)), place.line,
                     unit.empty() ? "" : ", in " + unit);
}

}  // namespace

std::vector<SourcePlace> crashPlaces(const refhost::SourceManager& sources,
                                     const std::filesystem::path& program, std::string_view report,
                                     const TerminationGuard& guard) {
  std::vector<SourcePlace> places;
  const std::vector<std::string> addresses = addressesIn(report);
  if (addresses.empty()) return places;
  // With -i also the lines from which inline functions were called.
  std::vector<std::string> arguments{"addr2line", "-i", "-e", program};
  arguments.insert(arguments.end(), addresses.begin(), addresses.end());
  std::string output;
  try {
    output = runProcess(arguments, guard, kTimeout).output;
  } catch (const Failure&) {
    return places;
  }
  std::string_view rest = output;
  for (std::size_t end = rest.find('\n'); end != std::string_view::npos; end = rest.find('\n')) {
    const auto place = placeIn(sources, rest.substr(0, end));
    rest.remove_prefix(end + 1);
    const auto isSame = [&](const SourcePlace& other) {
      return other.file == place->file && other.line == place->line;
    };
    if (place && (places.empty() || !isSame(places.back()))) places.push_back(*place);
  }
  return places;
}

std::string crashText(const refhost::Session& session, const std::vector<SourcePlace>& places) {
  if (places.empty()) return {};
  const SourcePlace& inner = places.front();
  std::string text = " at " + placeText(session, inner);
  std::string line = printable(session.sources().line(inner.file, inner.line));
  line.erase(0, line.find_first_not_of(' '));
  text += "\n  " + shortened(line);
  for (std::size_t i = 1; i < places.size(); ++i) {
    if (i == kMostShown) return text + "\n  ...";
    text += "\n  called at " + placeText(session, places[i]);
  }
  return text;
}

}  // namespace velc
