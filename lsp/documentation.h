// Texts in Markdown for what the analysis knows.
#pragma once

#include <string>
#include <string_view>

#include "refhost/editor/hover.h"

namespace lsp {

// The declaration, its comment, what is known of the value, and the page of `velc explain`.
std::string documentationOf(const refhost::Hover& hover);
// The page of `velc explain`; empty for none.
std::string pageOf(std::string_view topic);
// Its first paragraph, without the title.
std::string summaryOf(std::string_view topic);

}  // namespace lsp
