// The parts of the analysis. They call each other, since the constructs nest: an expression
// contains calls, an operand may be a type, and a type contains expressions.
#pragma once

#include "refhost/semantics/assignments.h"
#include "refhost/semantics/calls.h"
#include "refhost/semantics/configurations.h"
#include "refhost/semantics/configured_places.h"
#include "refhost/semantics/constant_variables.h"
#include "refhost/semantics/declarations.h"
#include "refhost/semantics/doubts.h"
#include "refhost/semantics/expressions.h"
#include "refhost/semantics/initials.h"
#include "refhost/semantics/locations.h"
#include "refhost/semantics/names.h"
#include "refhost/semantics/sizes.h"
#include "refhost/semantics/standard_calls.h"
#include "refhost/semantics/statements.h"
#include "refhost/semantics/suggestions.h"
#include "refhost/semantics/tests.h"
#include "refhost/semantics/types.h"

namespace refhost {

struct Parts {
  explicit Parts(Context& context)
      : names(context, *this),
        types(context, *this),
        declarations(context, *this),
        locations(context, *this),
        configuredPlaces(context, *this),
        constants(context, *this),
        initials(context, *this),
        expressions(context, *this),
        calls(context, *this),
        standardCalls(context, *this),
        assignments(context, *this),
        statements(context, *this),
        configurations(context, *this),
        sizes(context, *this),
        suggestions(context, *this),
        doubts(context, *this),
        tests(context, *this) {}

  Names names;
  Types types;
  Declarations declarations;
  Locations locations;
  ConfiguredPlaces configuredPlaces;
  ConstantVariables constants;
  Initials initials;
  Expressions expressions;
  Calls calls;
  StandardCalls standardCalls;
  Assignments assignments;
  Statements statements;
  Configurations configurations;
  Sizes sizes;
  Suggestions suggestions;
  Doubts doubts;
  Tests tests;
};

}  // namespace refhost
