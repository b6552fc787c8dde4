// The messages of the plugin, and the function with which the plugin and add-ons report
// messages. The plugin's codes begin with 0xC; core/add_on_api.h defines those of add-ons.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/ast_node_helper.h"
#include "host/internal_interface.h"
#include "host/message.h"

namespace vel {

enum class Severity : int { Error = 1, Warning = 2 };

struct MessageFormat {
  unsigned int code;
  Severity severity;
  const char* format;      // English, with a "%s" for each argument
  bool translated = true;  // false: shown in English always
};

// The formats are part of the contract with the host, including their final semicolons.
namespace message {

inline constexpr MessageFormat kConstantTooLarge{
    0xC0001, Severity::Error, "The constant '%s' is too large for data type '%s';"};
inline constexpr MessageFormat kCannotConvert{0xC0032, Severity::Error,
                                              "'%s' cannot convert to '%s' type;"};
// A warning, although the check that reports it fails.
inline constexpr MessageFormat kDoubtfulConversion{0xC0032, Severity::Warning,
                                                   kCannotConvert.format};
inline constexpr MessageFormat kExpectBool{0xC0032, Severity::Error, "'%s' expect 'BOOL' type;",
                                           false};
inline constexpr MessageFormat kNotShiftable{0xC0032, Severity::Error,
                                             "'%s' param '%s' not an 'Integer' type;"};
inline constexpr MessageFormat kTypeMismatch{0xC0032, Severity::Error,
                                             "'%s' invocation '%s':'%s' type mismatch;"};
inline constexpr MessageFormat kNotAssignable{0xC0037, Severity::Error,
                                              "'%s' are not allowed to be assigned values;"};
// The argument is the name of the operator, although the format says "PRG".
inline constexpr MessageFormat kParameterCount{
    0xC0040, Severity::Error,
    "Too many parameters, too few parameters, or no variables assigned to the IN_OUT in PRG "
    "'%s';"};
inline constexpr MessageFormat kUndefined{0xC0046, Severity::Error,
                                          "Identifier '%s' is not defined;"};
inline constexpr MessageFormat kUnsuitableType{0xC0072, Severity::Error,
                                               "Operator '%s' cannot be used for type '%s';"};
inline constexpr MessageFormat kUnknownType{0xC0077, Severity::Error, "Unknown type '%s';"};
inline constexpr MessageFormat kNotAllowed{0xC0131, Severity::Error,
                                           "'%s' are not allowed to be '%s' parameters;"};
inline constexpr MessageFormat kAbnormalParameters{0xC0131, Severity::Error,
                                                   "'%s' abnormal parameters;"};
inline constexpr MessageFormat kNotInteger{0xC0131, Severity::Error, kNotShiftable.format};
inline constexpr MessageFormat kToUnsigned{
    0xC0195, Severity::Warning,
    "Implicit conversion from type '%s' to type '%s' : may change the symbol"};
inline constexpr MessageFormat kToSigned{0xC0196, Severity::Warning, kToUnsigned.format};
inline constexpr MessageFormat kIntegerToFloat{0xC0197, Severity::Warning, kToUnsigned.format};
inline constexpr MessageFormat kInformationLoss{
    0xC0197, Severity::Warning,
    "Implicit conversion from type '%s' to type '%s' : Possible loss of information;"};
inline constexpr MessageFormat kAddressNotSupported{0xC0220, Severity::Error,
                                                    "This address(%s) is not supported;"};
inline constexpr MessageFormat kAddressNotValid{0xC0221, Severity::Error,
                                                "Address '%s' is not valid;"};
inline constexpr MessageFormat kAddressOverflow{0xC0221, Severity::Warning,
                                                "This address(%s) is overflow the local address;"};
inline constexpr MessageFormat kAddressMismatch{
    0xC0222, Severity::Error, "The start address(%s) does not match the end address(%s);"};
inline constexpr MessageFormat kAddressOrder{
    0xC0223, Severity::Error, "The start address(%s) is greater than the end address(%s);"};

}  // namespace message

// Translates and formats `what` with the arguments `texts`, and appends the message.
template <typename... Texts>
void report(InternalInterface* ii, std::vector<VELMessage>& messages, const MessageFormat& what,
            TextLocation where, const Texts&... texts) {
  // The host may return a reference to this string, so it has to live until it is formatted.
  const std::string english(what.format);
  const std::string& format = what.translated ? ii->translate(english) : english;
  VELMessage record;
  record.location = where;
  record.severity = static_cast<int>(what.severity);
  record.code = what.code;
  record.text = AstNodeHelper::stringFormat(what.code, format.c_str(), texts.c_str()...);
  messages.push_back(std::move(record));
}

}  // namespace vel
