#include <gtest/gtest.h>

#include "host/ast_node_helper.h"

namespace {

TEST(Text, FormatsTakeArgumentsInOrder) {
  const std::string text(3000, 'x');
  EXPECT_EQ(
      AstNodeHelper::stringFormat(7, "%s: '%s' is 100 %% of '%s'%s;", "a", text.c_str(), "", "%s"),
      "a: '" + text + "' is 100 % of ''%s;");
  EXPECT_EQ(AstNodeHelper::stringFormat(7, ""), "");
}

TEST(Text, DigestNamesAConditionOfAnOperator) {
  EXPECT_EQ(AstNodeHelper::opExpTextToMd5HexText("MEP", "a AND b"),
            "abe60a2afc3e4d66158c88c37bab5964");
}

}  // namespace
