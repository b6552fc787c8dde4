// Escaping of XML, for plots and reports.
#pragma once

namespace velc {

// The entity for a character that XML gives another meaning; null for all others.
inline const char* xmlEntity(char character) {
  switch (character) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    default:
      return nullptr;
  }
}

}  // namespace velc
