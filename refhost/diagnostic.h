// A message as a front end shows it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/messages.h"
#include "host/text_location.h"

namespace refhost {

using vel::Severity;

// A part of one source text.
struct SourceRange {
  vel::TextLocation begin;
  std::uint32_t length = 0;  // in bytes; 0 for a place, such as the end of a file
};

// A place that belongs to a message, and what there is to say about it.
struct Note {
  SourceRange range;
  std::string text;
};

// A text that takes the place of a part of a source; that part may be empty.
struct TextEdit {
  SourceRange range;
  std::string text;
};

// Changes of the source that together probably mend the fault. They do not overlap.
struct Fix {
  std::string title;  // what is done, for a menu: "Convert with REAL_TO_INT"
  std::vector<TextEdit> edits;
  bool likely = true;  // there is no other change that would do as well
};

struct Diagnostic {
  SourceRange range;
  Severity severity = Severity::Error;
  unsigned int code = 0;  // e.g. 0xC0040
  std::string text;
  std::vector<Note> notes;
  std::vector<Fix> fixes;
};

// A part of one source text in which some warnings are not wanted.
struct SilentPart {
  std::uint32_t file = 0;
  std::uint32_t begin = 0;
  std::uint32_t end = 0;               // offset of the first byte behind it
  std::vector<unsigned int> warnings;  // codes, kEveryWarning for all
};

}  // namespace refhost
