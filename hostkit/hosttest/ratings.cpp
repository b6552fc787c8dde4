// Ratings of implicit conversions.
#include "hostkit/hosttest/duties.h"

namespace hosttest {
namespace {

using T = vel::BasicDataType;

struct Rating {
  T source;
  T target;
};

// Expects the ratings of `rows`, without a source text, to lie between `least` and `most`.
void expectRatings(HostUnderTest& host, const std::vector<Rating>& rows, int least, int most,
                   const char* owed) {
  Faults wrong;
  for (const Rating& row : rows) {
    const int rating =
        AstNodeHelper::compareDataType(&host.services(), row.target, row.source, nullptr, "Main");
    wrong.addIf(rating < least || rating > most, AstNodeHelper::basicDataTypeText(row.source) +
                                                     " to " +
                                                     AstNodeHelper::basicDataTypeText(row.target) +
                                                     " is rated " + std::to_string(rating));
  }
  EXPECT_EQ(wrong.text(), "") << "AstNodeHelper::compareDataType(ii, target, source, text, unit) "
                                 "(host/ast_node_helper.h) owes "
                              << owed;
}

constexpr int kAny = 1 << 30;

void equalTypesFit(HostUnderTest& host) {
  std::vector<Rating> rows;
  for (const ElementaryType& type : elementaryTypes()) rows.push_back({type.number, type.number});
  expectRatings(host, rows, 0, kAny,
                "0 or more for a type and itself. Every call would be refused or warned of.");
}

void wideningFits(HostUnderTest& host) {
  expectRatings(host,
                {{T::SInt, T::Int},
                 {T::Int, T::DInt},
                 {T::DInt, T::LInt},
                 {T::USInt, T::UInt},
                 {T::UInt, T::UDInt},
                 {T::UDInt, T::ULInt},
                 {T::USInt, T::Int},
                 {T::UInt, T::DInt},
                 {T::UDInt, T::LInt},
                 {T::Int, T::Real},
                 {T::UInt, T::Real},
                 {T::DInt, T::LReal},
                 {T::SInt, T::LInt},
                 {T::UDInt, T::LReal},
                 {T::Real, T::LReal}},
                0, kAny,
                "0 or more where every value of the source is one of the target: the implicit "
                "conversions of the standard. Sound programs would be refused or warned of.");
}

void changesOfSignConvert(HostUnderTest& host) {
  expectRatings(host,
                {{T::SInt, T::USInt},
                 {T::Int, T::UInt},
                 {T::DInt, T::UDInt},
                 {T::LInt, T::ULInt},
                 {T::USInt, T::SInt},
                 {T::UInt, T::Int},
                 {T::UDInt, T::DInt},
                 {T::ULInt, T::LInt},
                 {T::Int, T::UDInt}},
                -1, -1,
                "-1 for a signed and an unsigned integer of which the target does not hold the "
                "source: operators warn that the sign may change (0xC0195, 0xC0196).");
}

void lossOfDigitsConverts(HostUnderTest& host) {
  expectRatings(host, {{T::LReal, T::Real}}, -1, -1,
                "-1 for LREAL to REAL: operators warn of the loss (0xC0197). Rated lower, "
                "conversions from REAL would refuse an LREAL.");
}

void strangersDoNotFit(HostUnderTest& host) {
  expectRatings(host,
                {{T::String, T::Int},
                 {T::Int, T::String},
                 {T::String, T::Bool},
                 {T::String, T::Real},
                 {T::WString, T::Int},
                 {T::Bool, T::String}},
                -2, -2,
                "-2 for types with no conversion between them. Operators would take a text for a "
                "number, or speak of a constant that is too large.");
}

void constantsAreRatedByTheirValue(HostUnderTest& host) {
  const auto rate = [&host](const char* text) {
    return AstNodeHelper::compareDataType(&host.services(), T::SInt, T::Int, text, "Main");
  };
  constexpr const char* kOwed =
      "AstNodeHelper::compareDataType(ii, target, source, text, unit) (host/ast_node_helper.h) "
      "owes "
      "0 or more for the text of an integer literal within the range of the target, and less than "
      "-2 beyond it. LIMIT(0, x, 100) would be refused for a small x, and a constant that is too "
      "large (0xC0001) called one of another type.";
  EXPECT_GE(rate("100"), 0) << "100 for a SINT: " << kOwed;
  EXPECT_LT(rate("300"), -2) << "300 for a SINT: " << kOwed;
}

}  // namespace

Duties ratingDuties() {
  return {{"EqualTypesFit", equalTypesFit},
          {"WideningFits", wideningFits},
          {"ChangesOfSignConvert", changesOfSignConvert},
          {"LossOfDigitsConverts", lossOfDigitsConverts},
          {"StrangersDoNotFit", strangersDoNotFit},
          {"ConstantsAreRatedByTheirValue", constantsAreRatedByTheirValue}};
}

}  // namespace hosttest
