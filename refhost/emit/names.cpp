#include "refhost/emit/names.h"

#include <algorithm>
#include <array>

namespace refhost {
namespace {

// Keywords of C, names that compilers predefine or call implicitly, and the short names of the
// runtime and of the operators' macros. Sorted.
constexpr std::array<std::string_view, 108> kReserved{"FABS",
                                                      "FC_MUX_INT",
                                                      "FC_MUX_LONGLONG",
                                                      "FC_MUX_LONGREAL",
                                                      "NULL",
                                                      "STRING_TO_LTIME",
                                                      "WSTRING_TO_LTIME",
                                                      "__platform_api",
                                                      "_m",
                                                      "_mef",
                                                      "_mep",
                                                      "_returnString",
                                                      "alignas",
                                                      "alignof",
                                                      "asm",
                                                      "auto",
                                                      "bool",
                                                      "break",
                                                      "case",
                                                      "char",
                                                      "const",
                                                      "constexpr",
                                                      "continue",
                                                      "default",
                                                      "do",
                                                      "double",
                                                      "else",
                                                      "enum",
                                                      "extern",
                                                      "f32",
                                                      "f64",
                                                      "false",
                                                      "float",
                                                      "for",
                                                      "gbit",
                                                      "getBitOfParam",
                                                      "goto",
                                                      "i16",
                                                      "i32",
                                                      "i386",
                                                      "i64",
                                                      "i8",
                                                      "if",
                                                      "inline",
                                                      "int",
                                                      "int16_t",
                                                      "int32_t",
                                                      "int64_t",
                                                      "int8_t",
                                                      "intmax_t",
                                                      "intptr_t",
                                                      "linux",
                                                      "lmvalue",
                                                      "long",
                                                      "main",
                                                      "max_align_t",
                                                      "memcmp",
                                                      "memcpy",
                                                      "memmove",
                                                      "memset",
                                                      "mips",
                                                      "mset",
                                                      "nullptr",
                                                      "offsetof",
                                                      "ptrdiff_t",
                                                      "register",
                                                      "restrict",
                                                      "return",
                                                      "returnValue",
                                                      "rmvalue",
                                                      "sbit",
                                                      "self",
                                                      "setBitOfParam",
                                                      "short",
                                                      "signed",
                                                      "size_t",
                                                      "sizeof",
                                                      "sparc",
                                                      "static",
                                                      "static_assert",
                                                      "struct",
                                                      "switch",
                                                      "thread_local",
                                                      "totalBit",
                                                      "true",
                                                      "typedef",
                                                      "typeof",
                                                      "u16",
                                                      "u32",
                                                      "u64",
                                                      "u8",
                                                      "uVarParam",
                                                      "uint16_t",
                                                      "uint32_t",
                                                      "uint64_t",
                                                      "uint8_t",
                                                      "uintmax_t",
                                                      "uintptr_t",
                                                      "union",
                                                      "unix",
                                                      "unsigned",
                                                      "validMoveBit",
                                                      "vgbit",
                                                      "void",
                                                      "volatile",
                                                      "vsbit",
                                                      "wchar_t",
                                                      "while"};

// Prefixes of the runtime's long names, of temporaries, of the companions of bit parameters, and
// of names that the C standard reserves.
constexpr std::array<std::string_view, 4> kReservedPrefixes{"__", "VEL_", "offsetParam_", "vel_"};

// Built-in functions of C compilers without their variants for float and long double: compilers
// make assumptions about functions of these names. Sorted.
constexpr std::array<std::string_view, 159> kLibrary{
    "abort",       "abs",        "acos",        "acosh",   "alloca",     "asin",     "asinh",
    "atan",        "atan2",      "atanh",       "bcmp",    "bcopy",      "bzero",    "cabs",
    "calloc",      "carg",       "cbrt",        "ceil",    "cexp",       "cimag",    "clog",
    "conj",        "copysign",   "cos",         "cosh",    "cpow",       "cproj",    "creal",
    "csin",        "csinh",      "csqrt",       "ctan",    "ctanh",      "drem",     "erf",
    "erfc",        "exit",       "exp",         "exp10",   "exp2",       "expm1",    "fabs",
    "fdim",        "ffs",        "finite",      "floor",   "fma",        "fmax",     "fmin",
    "fmod",        "fprintf",    "fputc",       "fputs",   "free",       "frexp",    "fscanf",
    "fwrite",      "gamma",      "hypot",       "ilogb",   "imaxabs",    "index",    "isalnum",
    "isalpha",     "isblank",    "iscntrl",     "isdigit", "isgraph",    "isinf",    "islower",
    "isnan",       "isprint",    "ispunct",     "isspace", "isupper",    "isxdigit", "j0",
    "j1",          "jn",         "labs",        "ldexp",   "lgamma",     "llabs",    "llrint",
    "llround",     "log",        "log10",       "log1p",   "log2",       "logb",     "lrint",
    "lround",      "malloc",     "memchr",      "mempcpy", "modf",       "nan",      "nearbyint",
    "nextafter",   "nexttoward", "pow",         "pow10",   "printf",     "putchar",  "puts",
    "remainder",   "remquo",     "rindex",      "rint",    "round",      "scalb",    "scalbln",
    "scalbn",      "scanf",      "significand", "sin",     "sincos",     "sinh",     "snprintf",
    "sprintf",     "sqrt",       "sscanf",      "stpcpy",  "strcasecmp", "strcat",   "strchr",
    "strcmp",      "strcpy",     "strcspn",     "strdup",  "strfmon",    "strftime", "strlen",
    "strncasecmp", "strncat",    "strncmp",     "strncpy", "strndup",    "strpbrk",  "strrchr",
    "strspn",      "strstr",     "tan",         "tanh",    "tgamma",     "toascii",  "tolower",
    "toupper",     "trunc",      "vfprintf",    "vfscanf", "vprintf",    "vscanf",   "vsnprintf",
    "vsprintf",    "vsscanf",    "y0",          "y1",      "yn"};

template <std::size_t N>
bool contains(const std::array<std::string_view, N>& sorted, std::string_view name) {
  return std::binary_search(sorted.begin(), sorted.end(), name);
}

bool isLibraryFunction(std::string_view name) {
  if (contains(kLibrary, name)) return true;
  const bool variant = !name.empty() && (name.back() == 'f' || name.back() == 'l');
  return variant && contains(kLibrary, name.substr(0, name.size() - 1));
}

// The macros of <stdint.h> for limits: INT32_MAX, SIZE_MAX and so on.
bool isLimit(std::string_view name) {
  const std::string_view end = name.size() < 4 ? std::string_view() : name.substr(name.size() - 4);
  if (end != "_MAX" && end != "_MIN") return false;
  constexpr std::array<std::string_view, 7> kBeginnings{"INT",  "PTRDIFF", "SIG_ATOMIC", "SIZE",
                                                        "UINT", "WCHAR",   "WINT"};
  return std::any_of(kBeginnings.begin(), kBeginnings.end(), [name](std::string_view begin) {
    return name.substr(0, begin.size()) == begin;
  });
}

bool isReserved(std::string_view name) { return contains(kReserved, name) || isLimit(name); }

// True also of _Bool and all names of its form, which the C standard reserves.
bool hasReservedPrefix(std::string_view name) {
  if (name.size() > 1 && name[0] == '_' && name[1] >= 'A' && name[1] <= 'Z') return true;
  return std::any_of(
      kReservedPrefixes.begin(), kReservedPrefixes.end(),
      [name](std::string_view prefix) { return name.substr(0, prefix.size()) == prefix; });
}

}  // namespace

bool CNames::isAvoided(std::string_view name) const {
  if (avoided_ == nullptr) return false;
  return avoided_->anywhere(name) || (scope_ == Scope::File && avoided_->atFileScope(name));
}

std::string CNames::allocate(std::string_view wanted) {
  std::string name(wanted);
  if (hasReservedPrefix(name)) name.insert(0, "st_");
  // Operators recognise the text of a bit access by these letters.
  for (std::size_t at = 0; (at = name.find("gbit", at)) != std::string::npos;) {
    name.insert(at + 1, 1, '_');
  }
  if (scope_ == Scope::File && isLibraryFunction(name)) name += '_';
  const auto refused = [&] {
    return isReserved(name) || isAvoided(name) || taken_.count(name) != 0;
  };
  while (refused()) name += '_';
  taken_.insert(name);
  return name;
}

}  // namespace refhost
