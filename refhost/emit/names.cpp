#include "refhost/emit/names.h"

#include <algorithm>
#include <array>

namespace refhost {
namespace {

// Keywords of C, names that compilers predefine as macros or call by themselves, and
// the runtime's short names. Sorted.
constexpr std::array<std::string_view, 87> kReserved{"NULL",        "__platform_api",
                                                     "_m",          "alignas",
                                                     "alignof",     "asm",
                                                     "auto",        "bool",
                                                     "break",       "case",
                                                     "char",        "const",
                                                     "continue",    "default",
                                                     "do",          "double",
                                                     "else",        "enum",
                                                     "extern",      "f32",
                                                     "f64",         "false",
                                                     "float",       "for",
                                                     "gbit",        "getBitOfParam",
                                                     "goto",        "i16",
                                                     "i32",         "i386",
                                                     "i64",         "i8",
                                                     "if",          "inline",
                                                     "int",         "int16_t",
                                                     "int32_t",     "int64_t",
                                                     "int8_t",      "intmax_t",
                                                     "intptr_t",    "linux",
                                                     "long",        "main",
                                                     "max_align_t", "memcmp",
                                                     "memcpy",      "memmove",
                                                     "memset",      "mset",
                                                     "offsetof",    "ptrdiff_t",
                                                     "register",    "restrict",
                                                     "return",      "sbit",
                                                     "self",        "setBitOfParam",
                                                     "short",       "signed",
                                                     "size_t",      "sizeof",
                                                     "static",      "struct",
                                                     "switch",      "true",
                                                     "typedef",     "typeof",
                                                     "u16",         "u32",
                                                     "u64",         "u8",
                                                     "uint16_t",    "uint32_t",
                                                     "uint64_t",    "uint8_t",
                                                     "uintmax_t",   "uintptr_t",
                                                     "union",       "unix",
                                                     "unsigned",    "vgbit",
                                                     "void",        "volatile",
                                                     "vsbit",       "wchar_t",
                                                     "while"};

// The runtime's long names, the temporaries of the emission and the companions of bit
// parameters begin so, and what the implementation of C keeps for itself.
constexpr std::array<std::string_view, 4> kReservedPrefixes{"__", "VEL_", "offsetParam_", "vel_"};

bool isReserved(std::string_view name) {
  return std::binary_search(kReserved.begin(), kReserved.end(), name);
}

bool hasReservedPrefix(std::string_view name) {
  return std::any_of(
      kReservedPrefixes.begin(), kReservedPrefixes.end(),
      [name](std::string_view prefix) { return name.substr(0, prefix.size()) == prefix; });
}

}  // namespace

std::string CNames::allocate(std::string_view wanted) {
  std::string name(wanted);
  if (hasReservedPrefix(name)) name.insert(0, "st_");
  while (isReserved(name) || taken_.count(name) != 0) name += '_';
  taken_.insert(name);
  return name;
}

}  // namespace refhost
