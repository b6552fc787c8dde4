#include "refhost/emit/split_names.h"

#include <algorithm>

#include "host/ast_node_helper.h"

namespace refhost {

namespace {

std::string folded(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char c) { return toLower(c); });
  return text;
}

}  // namespace

SplitNames::SplitNames(const FileContext& file)
    // The runtime's header, and headers of C libraries: the folder may be searched for headers.
    : taken_{"velrt", "vel_program", "vel_types", "vel_all", "vel_files", "assert", "complex",
             "ctype", "errno", "fenv", "float", "inttypes", "iso646", "limits", "locale", "math",
             "setjmp", "signal", "stdalign", "stdarg", "stdatomic", "stdbool", "stddef", "stdint",
             "stdio", "stdlib", "stdnoreturn", "string", "tgmath", "threads", "time", "uchar",
             "wchar", "wctype", "dirent", "dlfcn", "fcntl", "features", "malloc", "memory", "poll",
             "pthread", "sched", "semaphore", "strings", "syslog", "termios", "unistd", "windows",
             // Devices of DOS, which are files in every folder.
             "aux", "con", "nul", "prn", "com1", "com2", "com3", "com4", "com5", "com6", "com7",
             "com8", "com9", "lpt1", "lpt2", "lpt3", "lpt4", "lpt5", "lpt6", "lpt7", "lpt8",
             "lpt9"} {
  const SymbolTable& symbols = file.services.symbols;
  for (const UnitSymbol* const unit : symbols.units()) {
    names_[unit] = allocate(file.names.of(*unit).name);
  }
  if (symbols.globals() != nullptr) {
    names_[symbols.globals()] = allocate(file.names.of(*symbols.globals()).name);
  }
  for (const auto& owned : symbols.ownedTypes()) {
    const auto* const structure = dynamic_cast<const StructType*>(owned.get());
    if (structure != nullptr) names_[structure] = allocate(file.names.of(*structure).name);
  }
  if (!file.services.configuration.instances.empty()) {
    configuration_ = allocate(file.services.configuration.name);
  }
}

// File systems allow names of 255 bytes, and tools append to them.
std::string SplitNames::allocate(const std::string& wanted) {
  constexpr std::size_t kLongest = 100;
  std::string name = wanted;
  if (name.size() > kLongest) {
    name.resize(kLongest - 33);
    name += '_' + AstNodeHelper::opExpTextToMd5HexText("", wanted);
  }
  while (!taken_.insert(folded(name)).second) name += '_';
  return name;
}

}  // namespace refhost
