// `#line` directives, which tell C compilers the lines of the source.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace refhost {

// These say that the next line of C stands for this line of the source, with a line end.
std::string lineDirective(std::uint32_t line);  // in the same file as before
std::string lineDirective(std::uint32_t line, std::string_view file);

// Stands for a directive back to the lines of the C file itself until withOwnLines() puts it in,
// since only the whole file has line numbers.
constexpr const char* kToOwnLines = "#line\n";
// `name` is that of the C file; when empty, the compiler knows it.
std::string withOwnLines(const std::string& text, std::string_view name);

}  // namespace refhost
