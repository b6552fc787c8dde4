#include "refhost/emit/names.h"

#include <algorithm>
#include <array>

namespace refhost {
namespace {

// Keywords of C, names that compilers predefine as macros, and the runtime's short
// names. Sorted.
constexpr std::array<std::string_view, 68> kReserved{"NULL",     "__platform_api",
                                                     "_m",       "alignas",
                                                     "alignof",  "asm",
                                                     "auto",     "bool",
                                                     "break",    "case",
                                                     "char",     "const",
                                                     "continue", "default",
                                                     "do",       "double",
                                                     "else",     "enum",
                                                     "extern",   "f32",
                                                     "f64",      "false",
                                                     "float",    "for",
                                                     "gbit",     "goto",
                                                     "i16",      "i32",
                                                     "i386",     "i64",
                                                     "i8",       "if",
                                                     "inline",   "int",
                                                     "linux",    "long",
                                                     "main",     "mset",
                                                     "offsetof", "register",
                                                     "restrict", "return",
                                                     "sbit",     "self",
                                                     "short",    "signed",
                                                     "sizeof",   "static",
                                                     "struct",   "switch",
                                                     "true",     "typedef",
                                                     "typeof",   "u16",
                                                     "u32",      "u64",
                                                     "u8",       "union",
                                                     "unix",     "unsigned",
                                                     "vgbit",    "void",
                                                     "volatile", "vsbit",
                                                     "wchar_t",  "while",
                                                     "xor",      "xor_eq"};

bool isReserved(const std::string& name) {
  // The runtime's long names, the temporaries of the emission and the companions of
  // bit parameters begin so.
  const auto begins = [&name](const char* prefix) { return name.rfind(prefix, 0) == 0; };
  return begins("vel_") || begins("VEL_") || begins("__") || begins("offsetParam_") ||
         std::binary_search(kReserved.begin(), kReserved.end(), name);
}

}  // namespace

std::string CNames::allocate(std::string_view wanted) {
  std::string name(wanted);
  while (isReserved(name) || taken_.count(name) != 0) name += '_';
  taken_.insert(name);
  return name;
}

}  // namespace refhost
