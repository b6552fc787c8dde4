// The table of operators: their names and classes.
#include "core/registration.h"

#include "operators/convert/bcd.h"
#include "operators/convert/generic_conversion.h"
#include "operators/convert/string_to_value.h"
#include "operators/convert/trunc.h"
#include "operators/convert/typed_conversion.h"
#include "operators/convert/value_to_string.h"
#include "operators/device/bit_param.h"
#include "operators/device/direct_io.h"
#include "operators/device/zone.h"
#include "operators/func/adr.h"
#include "operators/func/move.h"
#include "operators/func/numeric.h"
#include "operators/func/sizeof.h"
#include "operators/select/edge.h"
#include "operators/select/min_max.h"
#include "operators/select/mux.h"
#include "operators/select/rotate.h"
#include "operators/select/selection.h"
#include "operators/select/shift.h"

namespace vel {
namespace {

template <class Operator>
std::unique_ptr<STOperator> make(const std::string& name) {
  return std::make_unique<Operator>(name);
}

// The order of these lists is the order of registration. They differ only in the order of their
// last members.
constexpr std::string_view kFromString =
    "BOOL BYTE WORD DWORD LWORD SINT USINT INT UINT DINT UDINT LINT ULINT REAL LREAL TIME TOD DATE "
    "DT";
constexpr std::string_view kToString =
    "BOOL BYTE WORD DWORD LWORD SINT USINT INT UINT DINT UDINT LINT ULINT REAL LREAL TIME LTIME "
    "DATE DT TOD";
constexpr std::string_view kToBool =
    "BYTE WORD DWORD LWORD SINT USINT INT UINT DINT UDINT LINT ULINT LREAL REAL TIME LTIME DATE DT "
    "TOD";
constexpr std::string_view kFromBool =
    "BYTE WORD DWORD LWORD SINT USINT INT UINT DINT UDINT LINT ULINT LREAL REAL TIME LTIME DT DATE "
    "TOD";
constexpr std::string_view kTargets =
    "BYTE WORD DWORD LWORD SINT USINT INT UINT DINT UDINT LINT ULINT TIME LTIME REAL LREAL DT DATE "
    "TOD";
constexpr std::string_view kIntegers =
    "BYTE WORD DWORD LWORD SINT USINT INT UINT DINT UDINT LINT ULINT";
constexpr std::string_view kGeneric =
    "BYTE WORD DWORD LWORD SINT USINT INT UINT DINT UDINT LINT ULINT LREAL REAL TIME LTIME TOD "
    "DATE DT";

// clang-format off
constexpr Registration kRows[] = {
    {"IRDBIT",         make<DirectIOOperator>},
    {"IWRBIT",         make<DirectIOOperator>},
    {"_READIDIRECT",   make<DirectIOOperator>},
    {"_WRITEODIRECT",  make<DirectIOOperator>},
    {"IZSET",          make<DirectIOOperator>},
    {"IZRST",          make<DirectIOOperator>},
    {"ZSET",           make<ZMemOperator>},
    {"ZRST",           make<ZMemOperator>},
    {"GETBITOFPARAM",  make<BitParamOperator>},
    {"SETBITOFPARAM",  make<BitParamOperator>},
    {"ROL",            make<ROLOperator>},
    {"ROR",            make<ROROperator>},
    {"SHL",            make<SHLOperator>},
    {"SHR",            make<SHROperator>},
    {"LIMIT",          make<LimitOperator>},
    {"SIZEOF",         make<SizeofOperator>},
    {"MIN",            make<MinOperator>},
    {"MAX",            make<MaxOperator>},
    {"MEF",            make<MefOperator>},
    {"MEP",            make<MepOperator>},
    {"SEL",            make<SelectOperator>},
    {"MUX",            make<MUXOperator>},
    {"MOVE",           make<MoveOperator>},
    {"ADR",            make<ADROperator>},
    {"ABS",            make<ABSOperator>},
    {"ACOS",           make<ACOSOperator>},
    {"ASIN",           make<ASINOperator>},
    {"ATAN",           make<ATANOperator>},
    {"COS",            make<COSOperator>},
    {"SIN",            make<SINOperator>},
    {"TAN",            make<TANOperator>},
    {"EXP",            make<EXPOperator>},
    {"EXPT",           make<EXPTOperator>},
    {"LN",             make<LNOperator>},
    {"LOG",            make<LOGOperator>},
    {"SQRT",           make<SQRTOperator>},
    {"BCD_TO_INT",     make<BCDToOperator>},
    {"INT_TO_BCD",     make<ToBCDOperator>},
    {"TRUNC",          make<TruncOperator>},
    {"STRING_TO_*",    make<StrToOperator>,          kFromString},
    {"WSTRING_TO_*",   make<StrToOperator>,          kFromString},
    {"*_TO_STRING",    make<ToStrOperator>,          kToString},
    {"TO_STRING",      make<ToStrUniversalOperator>},
    {"*_TO_WSTRING",   make<ToStrOperator>,          kToString},
    {"TO_WSTRING",     make<ToStrUniversalOperator>},
    {"*_TO_BOOL",      make<ToBoolOperator>,         kToBool},
    {"TO_BOOL",        make<ToBoolOperator>},
    {"BOOL_TO_*",      make<ConvertOperator>,        kFromBool},
    {"BYTE_TO_*",      make<ConvertOperator>,        kTargets},
    {"WORD_TO_*",      make<ConvertOperator>,        kTargets},
    {"DWORD_TO_*",     make<ConvertOperator>,        kTargets},
    {"LWORD_TO_*",     make<ConvertOperator>,        kTargets},
    {"SINT_TO_*",      make<ConvertOperator>,        kTargets},
    {"USINT_TO_*",     make<ConvertOperator>,        kTargets},
    {"INT_TO_*",       make<ConvertOperator>,        kTargets},
    {"UINT_TO_*",      make<ConvertOperator>,        kTargets},
    {"DINT_TO_*",      make<ConvertOperator>,        kTargets},
    {"UDINT_TO_*",     make<ConvertOperator>,        kTargets},
    {"LINT_TO_*",      make<ConvertOperator>,        kTargets},
    {"ULINT_TO_*",     make<ConvertOperator>,        kTargets},
    {"TIME_TO_*",      make<ConvertOperator>,        kTargets},
    {"LTIME_TO_*",     make<ConvertOperator>,        kTargets},
    {"DT_TO_*",        make<ConvertOperator>,        kTargets},
    {"DATE_TO_*",      make<ConvertOperator>,        kTargets},
    {"TOD_TO_*",       make<ConvertOperator>,        kTargets},
    {"LREAL_TO_*",     make<RealToIntegerOperator>,  kIntegers},
    {"LREAL_TO_REAL",  make<ConvertOperator>},
    {"LREAL_TO_*",     make<RealToIntegerOperator>,  "TIME LTIME DT DATE TOD"},
    {"REAL_TO_*",      make<RealToIntegerOperator>,  kIntegers},
    {"REAL_TO_LREAL",  make<ConvertOperator>},
    {"REAL_TO_*",      make<RealToIntegerOperator>,  "TIME LTIME DATE DT TOD"},
    {"TO_*",           make<GeneralConvertOperator>, kGeneric},
};
// clang-format on

}  // namespace

RegistrationTable registrationTable() { return {std::data(kRows), std::size(kRows)}; }

}  // namespace vel
