// Strings: formats, translations, upper case, digests, and lifetimes.
#include "host/text.h"
#include "hostkit/hosttest/duties.h"

namespace hosttest {
namespace {

void formatsTakeTexts(HostUnderTest& /*host*/) {
  constexpr const char* kOwed =
      "AstNodeHelper::stringFormat(code, format, ...) (host/ast_node_helper.h) owes the format "
      "with "
      "each \"%s\" replaced by the next text as it stands: several, long ones, and such as a "
      "direct "
      "address, which begins with a percent sign. Messages would be garbled.";
  EXPECT_EQ(AstNodeHelper::stringFormat(0xC0046, "no text;"), "no text;") << kOwed;
  EXPECT_EQ(AstNodeHelper::stringFormat(0xC0032, "'%s' invocation '%s':'%s';", "A", "b", "INT"),
            "'A' invocation 'b':'INT';")
      << kOwed;
  EXPECT_EQ(AstNodeHelper::stringFormat(0xC0222, "(%s) for (%s);", "%QX0.0", "%s%n%d"),
            "(%QX0.0) for (%s%n%d);")
      << kOwed;
  const std::string text(70000, 'x');
  EXPECT_EQ(AstNodeHelper::stringFormat(0xC0131, "'%s';", text.c_str()), "'" + text + "';")
      << kOwed;
}

// The message formats of the plugin.
const char* const kFormats[] = {
    "The constant '%s' is too large for data type '%s';",
    "'%s' cannot convert to '%s' type;",
    "'%s' param '%s' not an 'Integer' type;",
    "'%s' invocation '%s':'%s' type mismatch;",
    "'%s' are not allowed to be assigned values;",
    "Too many parameters, too few parameters, or no variables assigned to the IN_OUT in PRG '%s';",
    "Identifier '%s' is not defined;",
    "Operator '%s' cannot be used for type '%s';",
    "Unknown type '%s';",
    "'%s' are not allowed to be '%s' parameters;",
    "'%s' abnormal parameters;",
    "Implicit conversion from type '%s' to type '%s' : may change the symbol",
    "Implicit conversion from type '%s' to type '%s' : Possible loss of information;",
    "This address(%s) is not supported;",
    "Address '%s' is not valid;",
    "This address(%s) is overflow the local address;",
    "The start address(%s) does not match the end address(%s);",
    "The start address(%s) is greater than the end address(%s);",
};

// The number of "%s" in a format; -1 for a format with another conversion.
int placeholders(const std::string& text) {
  int count = 0;
  for (std::size_t at = text.find('%'); at != std::string::npos; at = text.find('%', at + 2)) {
    const char kind = at + 1 < text.size() ? text[at + 1] : '\0';
    if (kind != 's' && kind != '%') return -1;
    if (kind == 's') ++count;
  }
  return count;
}

void translationsKeepPlaceholders(HostUnderTest& host) {
  Faults wrong;
  for (const char* const english : kFormats) {
    const std::string format(english);
    const std::string shown = host.services().translate(format);
    wrong.addIf(placeholders(shown) != placeholders(format), "\"" + shown + "\"");
  }
  EXPECT_EQ(wrong.text(), "")
      << "InternalInterface::translate (host/internal_interface.h) owes a format with as many "
         "\"%s\" as the English one, in the same order. A message would read what no argument is.";
}

void translationsHoldUntilTheMessageIsMade(HostUnderTest& host) {
  Faults wrong;
  for (const char* const english : kFormats) {
    const std::string format(english);  // lives until the message is formatted
    std::string expected = host.services().translate(format);
    for (const char* const text : {"one", "two", "three"}) {
      const std::size_t at = expected.find("%s");
      if (at != std::string::npos) expected.replace(at, 2, text);
    }
    const std::string& shown = host.services().translate(format);
    const std::string made =
        AstNodeHelper::stringFormat(0xC0131, shown.c_str(), "one", "two", "three");
    wrong.addIf(made != expected, "\"" + made + "\" instead of \"" + expected + "\"");
  }
  EXPECT_EQ(wrong.text(), "")
      << "InternalInterface::translate (host/internal_interface.h) owes a text that holds until "
         "AstNodeHelper::stringFormat has made the message of it. Messages would be rubbish.";
}

void textsStayWhileAnOperatorWorks(HostUnderTest& host) {
  host.setLocalIo("I:0-16;Q:0-16;");
  Call call(host, "y := LIMIT(0, ABS(i), 100)");
  if (!call.isUsable()) GTEST_SKIP() << Call::why();
  const auto* const name = dynamic_cast<vel::ASTText*>(call.invocation()->leaf(0));
  const auto* const unit =
      dynamic_cast<POUDeclaration*>(vel::ASTNode::getPouAST(call.invocation()));
  if (name == nullptr || unit == nullptr) GTEST_SKIP() << Call::why();
  const std::string before = name->text() + std::string(" in ") + unit->name();
  const std::string option = host.generator().optionText("localio.addr");
  if (!call.check()) GTEST_SKIP() << "LIMIT is refused; see EveryOperatorGivesC";
  call.accept();
  static_cast<void>(call.generate());
  static_cast<void>(call.check());
  EXPECT_EQ(name->text() + std::string(" in ") + unit->name(), before)
      << "ASTText::text (host/ast.h) and POUDeclaration::name (host/declaration.h) owe the same "
         "text whenever an operator asks.";
  EXPECT_EQ(host.generator().optionText("localio.addr"), option)
      << "GenClanAPI::optionText (host/generator.h) owes the same text whenever an operator asks.";
}

void lettersBecomeUpperCase(HostUnderTest& /*host*/) {
  EXPECT_EQ(stringToUpper("int_To_REAL2 \xC3\xA9\xFF"), "INT_TO_REAL2 \xC3\xA9\xFF")
      << "stringToUpper (host/text.h) owes A to Z for a to z, and every other byte as it is. "
         "Operators would not know their own name in lower case.";
}

void digestsNameTheirCall(HostUnderTest& /*host*/) {
  constexpr const char* kOwed =
      "AstNodeHelper::opExpTextToMd5HexText (host/ast_node_helper.h) owes 32 hexadecimal digits, "
      "the same for the same two texts and others for others. Edge detections would share their "
      "state, or not find it.";
  const auto digest = AstNodeHelper::opExpTextToMd5HexText;
  const std::string one = digest("MEP", "b");
  EXPECT_EQ(one.size(), 32U) << kOwed;
  EXPECT_EQ(one.find_first_not_of("0123456789abcdefABCDEF"), std::string::npos) << kOwed;
  EXPECT_EQ(one, digest("MEP", "b")) << kOwed;
  EXPECT_NE(one, digest("MEF", "b")) << kOwed;
  EXPECT_NE(one, digest("MEP", "c")) << kOwed;
}

}  // namespace

Duties textDuties() {
  return {{"FormatsTakeTexts", formatsTakeTexts},
          {"TranslationsKeepPlaceholders", translationsKeepPlaceholders},
          {"TranslationsHoldUntilTheMessageIsMade", translationsHoldUntilTheMessageIsMade},
          {"TextsStayWhileAnOperatorWorks", textsStayWhileAnOperatorWorks},
          {"LettersBecomeUpperCase", lettersBecomeUpperCase},
          {"DigestsNameTheirCall", digestsNameTheirCall}};
}

}  // namespace hosttest
