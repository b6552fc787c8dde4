#include "cli/plot/svg.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/xml.h"
#include "hostkit/encoding.h"

namespace velc {

namespace {

constexpr double kCharacterWidth = 6.6;  // of the style sheet's font, on average

// As many characters of `text` as fit into `width`.
std::string fitted(std::string_view text, double width) {
  const std::size_t characters = hostkit::countCharacters(text);
  const auto room = static_cast<std::size_t>(std::max(width / kCharacterWidth, 0.0));
  if (characters <= room) return std::string(text);
  constexpr std::size_t kFewest = 4;
  if (room < kFewest) return {};
  return std::string(text.substr(0, hostkit::sizeOfFirst(room - 1, text))) + "…";
}

// A box that is pointed at both ends if it is wide enough.
std::string boxPath(const Frame& frame) {
  const double point = std::min(4.0, frame.width / 3);
  const double middle = frame.top + frame.height / 2;
  return fmt::format("M{} {}L{} {}H{}L{} {}L{} {}H{}Z", px(frame.left), px(middle),
                     px(frame.left + point), px(frame.top), px(frame.right() - point),
                     px(frame.right()), px(middle), px(frame.right() - point), px(frame.bottom()),
                     px(frame.left + point));
}

}  // namespace

std::string px(double value) {
  std::string text = fmt::format("{:.1f}", value);
  if (text.compare(text.size() - 2, 2, ".0") == 0) text.resize(text.size() - 2);
  return text == "-0" ? "0" : text;
}

std::string svgText(std::string_view text) {
  std::string result;
  for (const char c : text) {
    const char* const entity = xmlEntity(c);
    if (entity != nullptr) {
      result += entity;
    } else {
      result += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }
  }
  return result;
}

double textWidth(std::string_view text) {
  return static_cast<double>(hostkit::countCharacters(text)) * kCharacterWidth * 12 / 11;
}

void drawBox(const Frame& frame, std::string_view text, const char* style, std::string& svg) {
  constexpr double kMargin = 6;
  const std::string label = fitted(text, frame.width - kMargin);
  const std::string tip =
      label == text ? "/>" : fmt::format("><title>{}</title></path>", svgText(text));
  svg += fmt::format("<path class=\"{}\" d=\"{}\"{}\n", style, boxPath(frame), tip);
  if (label.empty()) return;
  svg += fmt::format("<text class=\"state\" x=\"{}\" y=\"{}\">{}</text>\n",
                     px(frame.left + frame.width / 2), px(frame.top + frame.height / 2 + 4),
                     svgText(label));
}

}  // namespace velc
