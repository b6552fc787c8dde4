// Pages of the documentation as they are shown within an editor.
#pragma once

#include <string>
#include <string_view>

namespace lsp {

// Markdown without the links to other files of the documentation, of which the client knows
// nothing. Those to messages lead to the installed page.
std::string withoutRelativeLinks(std::string_view page);

}  // namespace lsp
