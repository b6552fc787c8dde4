#pragma once

#include <string>

namespace refhost {

struct TranslatedFile {
  std::string name;  // without folders
  std::string text;
};

}  // namespace refhost
