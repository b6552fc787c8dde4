#include "cli/plot/plot.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/failure.h"
#include "cli/plot/axis.h"
#include "cli/plot/number_lane.h"
#include "cli/plot/state_lane.h"
#include "hostkit/elementary_types.h"
#include "hostkit/encoding.h"

namespace velc {

namespace {

using vel::BasicDataType;

constexpr std::size_t kMostLanes = 200;
constexpr double kWidth = 1000;
constexpr double kMargin = 14;
constexpr double kGap = 20;       // between lanes
constexpr double kTickRoom = 52;  // for the numbers of a lane's axis
constexpr double kTall = 600;     // a picture that has the axis of time at the top, too

// Light is for print, too, and for viewers that know no media queries.
constexpr const char* kStyle = R"(<style>
text { font: 12px "DejaVu Sans", Verdana, sans-serif; fill: #1f2328 }
.paper { fill: #ffffff }
.muted, .tick { fill: #57606a; font-size: 11px }
.state { text-anchor: middle; font-size: 11px }
.grid { stroke: #dde2e7; stroke-width: 1; fill: none }
.line { stroke: #0a5bb5; stroke-width: 1.5; stroke-linejoin: round; fill: none }
.fill { fill: #d3e5f8 }
.box { stroke: #0a5bb5; stroke-width: 1.2; stroke-linejoin: round; fill: #eaf3fc }
.mixed { stroke: #0a5bb5; stroke-width: 1; fill: #8fb9e6 }
.beyond { stroke: #9a6700; stroke-width: 1; fill: #fff1cc }
@media screen and (prefers-color-scheme: dark) {
text { fill: #e6edf3 }
.paper { fill: #0d1117 }
.muted, .tick { fill: #9da7b1 }
.grid { stroke: #2a313a }
.line { stroke: #6cb6ff }
.fill { fill: #17365a }
.box { stroke: #6cb6ff; fill: #12243a }
.mixed { stroke: #6cb6ff; fill: #2f5f94 }
.beyond { stroke: #d29922; fill: #3a2d0c }
}
</style>
)";

bool isNumber(const refhost::ValueShape& shape) {
  return shape.names.empty() && !hostkit::isBitStringName(shape.typeName) &&
         (hostkit::isNumber(shape.type) || hostkit::isDuration(shape.type));
}

// As far as there is room: the end of a path tells more than its beginning.
std::string shortName(const std::string& name) {
  constexpr std::size_t kMost = 26;
  const std::size_t characters = hostkit::countCharacters(name);
  if (characters <= kMost) return name;
  return "…" + name.substr(hostkit::sizeOfFirst(characters - kMost + 1, name));
}

std::string typeText(const Column& column, const Lane& lane) {
  const std::string unit = lane.unit();
  return column.shape->typeName + (unit.empty() ? "" : " in " + unit);
}

std::string nameText(const Column& column, const Lane& lane, const Frame& frame) {
  const double middle = frame.top + frame.height / 2;
  const std::string type = typeText(column, lane);
  const bool twoLines = frame.height > 40;
  std::string text = fmt::format("<g><title>{} : {}</title><text x=\"{}\" y=\"{}\">{}</text>",
                                 svgText(column.name), svgText(type), px(kMargin),
                                 px(middle + (twoLines ? -2 : 4)), svgText(shortName(column.name)));
  if (twoLines) {
    text += fmt::format("<text class=\"muted\" x=\"{}\" y=\"{}\">{}</text>", px(kMargin),
                        px(middle + 13), svgText(type));
  }
  return text + "</g>\n";
}

}  // namespace

std::unique_ptr<Lane> laneFor(const refhost::ValueShape& shape) {
  if (shape.type == BasicDataType::Bool || shape.type == BasicDataType::BitAddress) {
    return std::make_unique<LevelLane>();
  }
  if (isNumber(shape)) return std::make_unique<NumberLane>(shape);
  return std::make_unique<StateLane>();
}

Plot::Plot(const std::vector<Column>& columns) : columns_(columns) {
  if (columns.size() > kMostLanes) {
    throw Failure(fmt::format("--plot draws no more than {} values, and {} are traced", kMostLanes,
                              columns.size()));
  }
  for (const Column& column : columns) lanes_.push_back(laneFor(*column.shape));
}

void Plot::scan(std::uint64_t /*time*/, const std::vector<Cell>& cells) {
  for (std::size_t i = 0; i < cells.size(); ++i) lanes_[i]->add(cells[i]);
  ++scans_;
}

std::string Plot::svg() const {
  double height = kGap;
  for (const auto& lane : lanes_) height += lane->height() + kGap;
  const bool tall = height > kTall;
  constexpr double kAxisHeight = 34;
  const double top = tall ? kAxisHeight : 0;
  double names = 0;
  for (std::size_t i = 0; i < lanes_.size(); ++i) {
    const std::string name = shortName(columns_[i].name);
    names = std::max({names, textWidth(name), textWidth(typeText(columns_[i], *lanes_[i]))});
  }
  const double left = kMargin + names + kTickRoom;
  const Frame frame{left, top + kGap / 2, kWidth - kMargin * 2 - left, height - kGap};
  const double total = top + height + kAxisHeight;

  std::string svg = fmt::format(
      "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 {0} {1}\" width=\"{0}\" "
      "height=\"{1}\" role=\"img\">\n<title>Values over time</title>\n{2}<rect class=\"paper\" "
      "width=\"{0}\" height=\"{1}\"/>\n",
      px(kWidth), px(total), kStyle);

  // Without a time between the scans their numbers stand at the axis.
  const double end = end_ == 0 ? static_cast<double>(scans_) : static_cast<double>(end_) * 1e6;
  Unit unit = end_ == 0 ? Unit{1, "scans"} : timeUnit(end);
  if (end > 0) {
    for (const Tick& tick : ticksBetween(0, end / unit.size, 11)) {
      const std::string x = px(frame.left + tick.value * unit.size / end * frame.width);
      svg += fmt::format("<path class=\"grid\" d=\"M{} {}V{}\"/>\n", x, px(frame.top),
                         px(frame.bottom()));
      const auto label = [&](double y) {
        svg +=
            fmt::format("<text class=\"tick\" x=\"{}\" y=\"{}\" text-anchor=\"middle\">{}</text>\n",
                        x, px(y), tick.label);
      };
      label(frame.bottom() + 16);
      if (tall) label(frame.top - 8);
    }
    svg += fmt::format("<text class=\"tick\" x=\"{}\" y=\"{}\" text-anchor=\"end\">{}{}</text>\n",
                       px(frame.left - 22), px(frame.bottom() + 16), end_ == 0 ? "" : "time in ",
                       unit.name);
  }
  double y = top + kGap;
  for (std::size_t i = 0; i < lanes_.size(); ++i) {
    const Frame lane{frame.left, y, frame.width, lanes_[i]->height()};
    svg += nameText(columns_[i], *lanes_[i], lane);
    lanes_[i]->draw(lane, scans_, svg);
    y += lane.height + kGap;
  }
  return svg + "</svg>\n";
}

}  // namespace velc
