// Text of SVG.
#pragma once

#include <string>
#include <string_view>

namespace velc {

// A coordinate in pixels, with a tenth at most.
std::string px(double value);

// Text as the content of an element. Control characters become blanks.
std::string svgText(std::string_view text);

// About the width of a text in the font of the names.
double textWidth(std::string_view text);

// The rectangle in which a lane is drawn.
struct Frame {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;

  double right() const { return left + width; }
  double bottom() const { return top + height; }
};

constexpr double kBoxHeight = 24;

// Appends a box with a text, as far as it has room.
void drawBox(const Frame& frame, std::string_view text, const char* style, std::string& svg);

}  // namespace velc
