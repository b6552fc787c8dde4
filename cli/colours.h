// Colours of a terminal.
#pragma once

#include <string>
#include <string_view>

namespace velc {

enum class ColourChoice { Auto, Always, Never };

// Puts the escape sequences of a terminal around parts of a text, or leaves them as they are.
class Colours {
 public:
  enum class Role { None, Error, Warning, Note, Strong, Mark };

  // Without colours.
  Colours() = default;
  // For what is written to `descriptor`: by Auto, if that is a terminal that understands escape
  // sequences and the environment does not have NO_COLOR.
  Colours(ColourChoice choice, int descriptor);

  bool on() const { return on_; }
  std::string operator()(Role role, std::string_view text) const;

 private:
  bool on_ = false;
};

}  // namespace velc
