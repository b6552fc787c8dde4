#include "refhost/syntax/left_out.h"

#include "refhost/services/folded.h"

namespace refhost {

namespace {

using Extent = LeftOut::Extent;

constexpr const MessageFormat* kRefused = &message::kNotSupported;
constexpr const char* kChart = "Sequential function charts (SFC) are";
constexpr const char* kInstructions = "Instruction lists (IL) are";
constexpr const char* kModifiers = "Modifiers of units and variables are";

constexpr LeftOut kLeftOut[] = {
    {"CLASS", Extent::Closer, "END_CLASS", kRefused, "Classes (CLASS) are"},
    {"INTERFACE", Extent::Closer, "END_INTERFACE", kRefused, "Interfaces (INTERFACE) are"},
    {"METHOD", Extent::Closer, "END_METHOD", kRefused, "Methods (METHOD) are"},
    {"PROPERTY", Extent::Closer, "END_PROPERTY", kRefused, "Properties (PROPERTY) are"},
    {"ACTION", Extent::Closer, "END_ACTION", kRefused, "Actions (ACTION) are"},
    {"NAMESPACE", Extent::Names, "", kRefused, "Namespaces (NAMESPACE) are"},
    {"END_NAMESPACE", Extent::Word, "", nullptr, ""},
    {"USING", Extent::Names, "", kRefused, "Namespaces (USING) are"},
    {"EXTENDS", Extent::Names, "", kRefused, "Derived units (EXTENDS) are"},
    {"IMPLEMENTS", Extent::Names, "", kRefused, "Interfaces (IMPLEMENTS) are"},
    {"ABSTRACT", Extent::Word, "", kRefused, kModifiers},
    {"FINAL", Extent::Word, "", kRefused, kModifiers},
    {"PUBLIC", Extent::Word, "", kRefused, kModifiers},
    {"PROTECTED", Extent::Word, "", kRefused, kModifiers},
    {"PRIVATE", Extent::Word, "", kRefused, kModifiers},
    {"INTERNAL", Extent::Word, "", kRefused, kModifiers},
    {"INITIAL_STEP", Extent::Unit, "", kRefused, kChart},
    {"STEP", Extent::Unit, "", kRefused, kChart},
    {"TRANSITION", Extent::Unit, "", kRefused, kChart},
    {"LD", Extent::Unit, "", kRefused, kInstructions},
    {"LDN", Extent::Unit, "", kRefused, kInstructions},
    {"CAL", Extent::Unit, "", kRefused, kInstructions},
    // Of interest to others than the program.
    {"VAR_ACCESS", Extent::Closer, "END_VAR", nullptr, ""},
    {"VAR_CONFIG", Extent::Closer, "END_VAR", &message::kNoEffect, "VAR_CONFIG"},
};

}  // namespace

const LeftOut* leftOut(std::string_view word) {
  for (const LeftOut& construct : kLeftOut) {
    if (equalFolded(construct.opener, word)) return &construct;
  }
  return nullptr;
}

}  // namespace refhost
