// The digest that names the hidden variable of an edge detection.
#include <md5.h>

#include <array>

#include "host/ast_node_helper.h"

std::string AstNodeHelper::opExpTextToMd5HexText(const std::string& op,
                                                 const std::string& expression) {
  const std::string text = op + "(" + expression + ")";
  std::array<char, MD5_DIGEST_STRING_LENGTH> hex{};
  MD5Data(reinterpret_cast<const std::uint8_t*>(text.data()), text.size(), hex.data());
  return hex.data();
}
