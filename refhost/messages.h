// The host's own messages, in the plugin's format.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "core/messages.h"
#include "host/message.h"

namespace refhost {

using vel::MessageFormat;
using vel::Severity;

namespace message {
// Assignments are checked with the messages of the operators' type check.
using vel::message::kCannotConvert;
using vel::message::kConstantTooLarge;
using vel::message::kInformationLoss;

// A new message takes the next free code of its group.
// clang-format off
constexpr MessageFormat kNotAccepted       {0xF0001, Severity::Error, "The call of '%s' is not accepted;"};
constexpr MessageFormat kSyntax            {0xF0002, Severity::Error, "Syntax error: %s;"};
constexpr MessageFormat kBadLiteral        {0xF0003, Severity::Error, "'%s' is not a valid literal;"};
constexpr MessageFormat kLiteralRange      {0xF0004, Severity::Error, "The literal '%s' is out of range;"};
constexpr MessageFormat kUnterminated      {0xF0005, Severity::Error, "Unterminated %s;"};
constexpr MessageFormat kNestingTooDeep    {0xF0006, Severity::Error, "Nested deeper than %s levels;"};
constexpr MessageFormat kNotSupported      {0xF0007, Severity::Error, "%s not supported;"};
constexpr MessageFormat kTypeNotSupported  {0xF0007, Severity::Error, "The type '%s' is not supported;"};
constexpr MessageFormat kTooManyErrors     {0xF0008, Severity::Error, "Too many errors: the rest of the file is not read;"};
constexpr MessageFormat kNoCaseLabel       {0xF0009, Severity::Error, "A statement of a CASE stands before its first label;"};
constexpr MessageFormat kKeywordName       {0xF000B, Severity::Error, "'%s' is a keyword and cannot be a name;"};

constexpr MessageFormat kUnknownName       {0xF0020, Severity::Error, "Unknown identifier '%s';"};
constexpr MessageFormat kRedeclared        {0xF0021, Severity::Error, "'%s' is already declared;"};
constexpr MessageFormat kUnknownType       {0xF0022, Severity::Error, "Unknown type '%s';"};
constexpr MessageFormat kNotWritable       {0xF0023, Severity::Error, "'%s' cannot be written;"};
constexpr MessageFormat kUnknownMember     {0xF0024, Severity::Error, "'%s' has no member '%s';"};
constexpr MessageFormat kNotCallable       {0xF0025, Severity::Error, "'%s' cannot be called;"};
constexpr MessageFormat kNoResult          {0xF0026, Severity::Error, "The call of '%s' has no result;"};
constexpr MessageFormat kUnknownParameter  {0xF0027, Severity::Error, "'%s' has no parameter '%s' to be given here;"};
constexpr MessageFormat kInOutMissing      {0xF0028, Severity::Error, "The in-out parameter '%s' of '%s' is not assigned;"};
constexpr MessageFormat kTooManyArguments  {0xF0029, Severity::Error, "Too many parameters in the call of '%s';"};
constexpr MessageFormat kArgumentTwice     {0xF002A, Severity::Error, "The parameter '%s' is given twice;"};
constexpr MessageFormat kOperandTypes      {0xF002B, Severity::Error, "The operator '%s' cannot be applied to '%s' and '%s';"};
constexpr MessageFormat kOperandType       {0xF002C, Severity::Error, "The operator '%s' cannot be applied to '%s';"};
constexpr MessageFormat kCondition         {0xF002D, Severity::Error, "A condition must be of type 'BOOL', not '%s';"};
constexpr MessageFormat kSelector          {0xF002E, Severity::Error, "A CASE selector must be of an integer type, not '%s';"};
constexpr MessageFormat kNotConstant       {0xF002F, Severity::Error, "'%s' is not a constant integer;"};
constexpr MessageFormat kControlVariable   {0xF0030, Severity::Error, "The control variable '%s' must be a variable of an integer type;"};
constexpr MessageFormat kStepZero          {0xF0031, Severity::Error, "The step of a FOR loop must not be 0;"};
constexpr MessageFormat kOutsideLoop       {0xF0032, Severity::Error, "'%s' outside of a loop;"};
constexpr MessageFormat kBadAddress        {0xF0033, Severity::Error, "Address '%s' is not valid;"};
constexpr MessageFormat kAddressSize       {0xF0034, Severity::Error, "Address '%s' does not fit type '%s';"};
constexpr MessageFormat kContainsItself    {0xF0035, Severity::Error, "The function block '%s' contains itself;"};
constexpr MessageFormat kStringLength      {0xF0036, Severity::Error, "'%s' is not a string length from 1 to 32767;"};
constexpr MessageFormat kNothingGenerated  {0xF0037, Severity::Error, "The operator '%s' generates nothing for this call;"};
constexpr MessageFormat kBitOutOfRange     {0xF0038, Severity::Error, "Bit %s is outside of type '%s';"};
constexpr MessageFormat kNotPassable       {0xF0039, Severity::Error, "'%s' cannot be passed to the in-out parameter '%s' of type '%s';"};
constexpr MessageFormat kNotAValue         {0xF003A, Severity::Error, "'%s' is not a value;"};
constexpr MessageFormat kMixedArguments    {0xF003B, Severity::Error, "A positional parameter follows a named one in the call of '%s';"};
constexpr MessageFormat kOperatorName      {0xF003C, Severity::Error, "'%s' is the name of an operator and cannot be that of a unit;"};
constexpr MessageFormat kEmptyRange        {0xF003D, Severity::Warning, "The range '%s' is empty;"};
constexpr MessageFormat kPlacedParameter   {0xF003E, Severity::Error, "The parameter '%s' cannot have an address: it stands for what a call gives it;"};
constexpr MessageFormat kConstantCircle    {0xF003F, Severity::Error, "The value of the constant '%s' depends on itself: %s;"};
constexpr MessageFormat kTooFewArguments   {0xF0060, Severity::Error, "Too few parameters in the call of '%s';"};
constexpr MessageFormat kEnumerationBase   {0xF0061, Severity::Error, "'%s' cannot be the base type of an enumeration, which is an integer type;"};
constexpr MessageFormat kNoGlobal          {0xF0090, Severity::Error, "There is no global variable '%s';"};
constexpr MessageFormat kExternalType      {0xF0091, Severity::Error, "The global variable '%s' is of type '%s';"};
constexpr MessageFormat kNotAProgram       {0xF0092, Severity::Error, "'%s' is not a PROGRAM;"};
constexpr MessageFormat kUnknownTask       {0xF0093, Severity::Error, "There is no task '%s';"};
constexpr MessageFormat kTaskProperty      {0xF0094, Severity::Error, "A task has no property '%s': it has INTERVAL, SINGLE and PRIORITY;"};
constexpr MessageFormat kPartOutOfRange    {0xF00D0, Severity::Error, "'%s' is outside of type '%s';"};
constexpr MessageFormat kAddressLevel      {0xF00D3, Severity::Error, "The number %s of address '%s' must be below %s;"};
constexpr MessageFormat kAddressOutside    {0xF00D4, Severity::Error, "Address '%s' begins at byte %s of an area of %s bytes;"};
constexpr MessageFormat kNoPlace           {0xF00D5, Severity::Error, "'%s' has no place: VAR_CONFIG gives none to '%s';"};
constexpr MessageFormat kNotKept           {0xF00D6, Severity::Error, "'%s' is not kept between calls, so VAR_CONFIG cannot give it a place;"};
constexpr MessageFormat kConfiguredType    {0xF00D7, Severity::Error, "'%s' is of type '%s', not '%s';"};
constexpr MessageFormat kConfiguredArea    {0xF00D8, Severity::Error, "Address '%s' is none of '%s', at which '%s' is declared;"};
constexpr MessageFormat kNotOpen           {0xF00D9, Severity::Error, "'%s' is not declared at an open address: VAR_CONFIG cannot place it;"};
constexpr MessageFormat kConfiguredTwice   {0xF00DA, Severity::Error, "'%s' has a place already;"};
constexpr MessageFormat kNothingToConfigure{0xF00DB, Severity::Error, "There is no variable '%s' to configure;"};
constexpr MessageFormat kInitialTwice      {0xF00DC, Severity::Error, "'%s' has an initial value already;"};
constexpr MessageFormat kAddressAlignment  {0xF00D1, Severity::Error, "Address '%s' is at byte %s, but not at a multiple of the %s bytes that type '%s' needs;"};
constexpr MessageFormat kAddressExtent     {0xF00D2, Severity::Error, "Type '%s' of %s bytes does not fit at '%s', where %s of %s bytes of its area are left;"};
constexpr MessageFormat kLocalDefault      {0xF009B, Severity::Error, "The default of '%s' cannot depend on '%s', a variable of '%s';"};
constexpr MessageFormat kEdge              {0xF0095, Severity::Error, "'%s' has no edges: R_EDGE and F_EDGE are for inputs of type BOOL of a PROGRAM or a function block;"};
constexpr MessageFormat kTaskInterval      {0xF00A0, Severity::Error, "The INTERVAL of a task must be a constant greater than 0, not '%s';"};
constexpr MessageFormat kTaskPriority      {0xF00A1, Severity::Error, "The PRIORITY of a task must be a constant from 0 to 65535, not '%s';"};
constexpr MessageFormat kTaskNeverDue      {0xF00A2, Severity::Error, "The task '%s' has neither INTERVAL nor SINGLE and would never run;"};
constexpr MessageFormat kSecondConfiguration{0xF00A3, Severity::Error, "The configuration '%s' already has program instances: there can be no others beside it;"};
constexpr MessageFormat kNoInstance        {0xF00A4, Severity::Warning, "The PROGRAM '%s' does not run: the configuration has no instance of it;"};

constexpr MessageFormat kOnlyInTests       {0xF0100, Severity::Error, "'%s' can only be called in a TEST, SETUP or TEARDOWN;"};

constexpr MessageFormat kUnknownWarning    {0xF00E0, Severity::Warning, "'%s' is neither the code of a warning nor a group of them;"};
constexpr MessageFormat kDivisionByZero    {0xF00E1, Severity::Warning, "The division by '%s' gives %s;"};
constexpr MessageFormat kAlwaysSo          {0xF00E2, Severity::Warning, "'%s' is always %s: a '%s' lies in %s..%s;"};
constexpr MessageFormat kUnreachable       {0xF00E3, Severity::Warning, "This is never executed, since it stands behind '%s';"};
constexpr MessageFormat kNeverRuns         {0xF00E4, Severity::Warning, "The loop never runs: it counts from %s to %s by %s;"};
constexpr MessageFormat kNoValue           {0xF00E5, Severity::Warning, "The constant '%s' is given no value;"};
constexpr MessageFormat kConstantOutput    {0xF00E6, Severity::Error, "Outputs cannot be constant: the body assigns to them;"};
constexpr MessageFormat kNotRetained       {0xF00E7, Severity::Warning, "'%s' has no effect on %s;"};
constexpr MessageFormat kNeverUsed         {0xF00E8, Severity::Warning, "The variable '%s' is never used;"};
constexpr MessageFormat kNeverRead         {0xF00E9, Severity::Warning, "The variable '%s' is never read;"};
constexpr MessageFormat kUnusedInProgram   {0xF00EA, Severity::Warning, "The variable '%s' of the PROGRAM is never used;"};
constexpr MessageFormat kSelfAssignment    {0xF00EB, Severity::Warning, "'%s' is assigned to itself;"};
constexpr MessageFormat kRealEquality      {0xF00EC, Severity::Warning, "'%s' compares real numbers, which are rarely equal;"};
constexpr MessageFormat kIntegerDivision   {0xF00ED, Severity::Warning, "The integer division '%s' drops its fraction before it becomes a '%s';"};
constexpr MessageFormat kSurprise          {0xF00EE, Severity::Warning, "'%s' %s;"};
constexpr MessageFormat kNotHeld           {0xF00F0, Severity::Warning, "'%s' does not hold '%s': the result is undefined;"};
constexpr MessageFormat kCapitals          {0xF00EF, Severity::Error, "The operator '%s' must be written in capitals;"};

constexpr MessageFormat kTypeContainsItself{0xF0070, Severity::Error, "The type '%s' contains itself;"};
constexpr MessageFormat kBounds            {0xF0071, Severity::Error, "'%s' are not the bounds of a range;"};
constexpr MessageFormat kTooLarge          {0xF0099, Severity::Error, "'%s' has %s bytes, more than the %s that a program may have;"};
constexpr MessageFormat kTooMuchMemory     {0xF0099, Severity::Error, "The variables up to '%s' have %s bytes, more than the %s that a program may have;"};
constexpr MessageFormat kTooMuchStack      {0xF009A, Severity::Error, "A call of '%s' takes %s bytes of stack, more than the %s that it may take;"};
constexpr MessageFormat kSubrange          {0xF0072, Severity::Error, "'%s' is not a range of type '%s';"};
constexpr MessageFormat kInitialParts      {0xF0073, Severity::Error, "'%s' is not an initial value of type '%s';"};
constexpr MessageFormat kTooManyValues     {0xF0074, Severity::Error, "More initial values than the %s %s of the %s;"};
constexpr MessageFormat kAmbiguousValue    {0xF0075, Severity::Error, "'%s' is a value of several enumerations: write TYPE#%s;"};
constexpr MessageFormat kNoElements        {0xF0076, Severity::Error, "'%s' of type '%s' has no elements;"};
constexpr MessageFormat kSubscriptCount    {0xF0077, Severity::Error, "The number of subscripts of '%s' is %s, not %s;"};
constexpr MessageFormat kSubscriptType     {0xF0078, Severity::Error, "A subscript must be of an integer type, not '%s';"};
constexpr MessageFormat kSubscriptRange    {0xF0079, Severity::Error, "The subscript '%s' is outside of %s..%s;"};
constexpr MessageFormat kNotAPointer       {0xF007A, Severity::Error, "'%s' of type '%s' is not a pointer;"};
constexpr MessageFormat kNoAddress         {0xF007B, Severity::Error, "'%s' has no address that a pointer could hold;"};
constexpr MessageFormat kOutOfSubrange     {0xF007C, Severity::Error, "The value '%s' is outside of the range %s..%s;"};
constexpr MessageFormat kToEnumeration     {0xF007D, Severity::Warning, "An integer is given to the enumeration '%s';"};
constexpr MessageFormat kPointerTarget     {0xF007E, Severity::Warning, "A '%s' is given to a '%s';"};
constexpr MessageFormat kPointerBits       {0xF007F, Severity::Warning, "A pointer has 64 bits, of which '%s' cannot hold all;"};
constexpr MessageFormat kRepetitions       {0xF0098, Severity::Error, "An initial value cannot be repeated '%s' times, which is %s;"};
constexpr MessageFormat kNotAReference     {0xF00B0, Severity::Error, "'%s' is not a REFERENCE TO;"};
constexpr MessageFormat kNotBindable       {0xF00B1, Severity::Error, "'%s' cannot be bound to '%s': it takes a variable of type '%s';"};
constexpr MessageFormat kOpenArray         {0xF00B2, Severity::Error, "'%s' of type '%s' can only be subscripted, passed on and asked for its bounds;"};
constexpr MessageFormat kOperatorFailed    {0xF0097, Severity::Error, "Operator '%s' failed: %s;"};
constexpr MessageFormat kRepeatedLabel     {0xF0096, Severity::Warning, "The label '%s' has values of another label: the first of them in the CASE holds;"};
// clang-format on
}  // namespace message

// True of the code of a warning about what is right by the language.
constexpr bool isDoubt(unsigned int code) {
  return code >= message::kDivisionByZero.code && code <= message::kNotHeld.code &&
         code != message::kConstantOutput.code && code != message::kCapitals.code;
}

// The format with its placeholders filled with `args` in order.
std::string filledIn(const MessageFormat& format, std::initializer_list<std::string_view> args);

// The arguments with which the format was filled in to become `text`, which they refer to; none if
// that is another message.
std::vector<std::string_view> argumentsIn(const MessageFormat& format, std::string_view text);

// Appends a message to a list that the contract passes. Elsewhere Diagnostics::report() is used.
void report(std::vector<vel::VELMessage>& messages, vel::TextLocation location,
            const MessageFormat& format, std::initializer_list<std::string_view> args);

}  // namespace refhost
