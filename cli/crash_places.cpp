#include "cli/crash_places.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <optional>

#include "cli/excerpt.h"
#include "cli/failure.h"
#include "cli/process.h"

namespace velc {

namespace {

constexpr std::chrono::seconds kTimeout{60};
constexpr std::string_view kBranch = " (discriminator ";  // addr2line writes it behind a line
constexpr std::size_t kFirstShown = 6;                    // of many places
constexpr std::size_t kLastShown = 2;

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

// Removes and returns the first of addr2line's answers, which are lines unless a file name contains
// line ends.
std::string_view takeAnswer(std::string_view& rest) {
  std::size_t end = 0;
  for (;; ++end) {
    end = std::min(rest.find('\n', end), rest.size());
    std::string_view text = rest.substr(0, end);
    text = text.substr(0, text.find_last_not_of("0123456789)?") + 1);
    const bool whole = end == rest.size() || (!text.empty() && text.back() == ':') ||
                       text.substr(text.size() - std::min(text.size(), kBranch.size())) == kBranch;
    if (whole) break;
  }
  const std::string_view answer = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return answer;
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
  for (std::string_view rest = output; !rest.empty();) {
    const auto place = placeIn(sources, takeAnswer(rest));
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
    if (i == kFirstShown && places.size() > kFirstShown + kLastShown) {
      text += "\n  ...";
      i = places.size() - kLastShown;
    }
    text += "\n  called at " + placeText(session, places[i]);
  }
  return text;
}

}  // namespace velc
