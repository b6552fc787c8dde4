// Words of the language by the places where they can stand. Those of blocks are in constructs.h.
#pragma once

#include "grammar.h"
#include "refhost/syntax/keyword.h"

namespace refhost::words {

inline constexpr Keyword kUnits[] = {{"PROGRAM", grammar::Parser::token::PROGRAM},
                                     {"FUNCTION", grammar::Parser::token::FUNCTION},
                                     {"FUNCTION_BLOCK", grammar::Parser::token::FUNCTION_BLOCK},
                                     {"CONFIGURATION", grammar::Parser::token::CONFIGURATION}};
inline constexpr Keyword kSections[] = {
    {"VAR", grammar::Parser::token::VAR},
    {"VAR_INPUT", grammar::Parser::token::VAR_INPUT},
    {"VAR_OUTPUT", grammar::Parser::token::VAR_OUTPUT},
    {"VAR_IN_OUT", grammar::Parser::token::VAR_IN_OUT},
    {"VAR_TEMP", grammar::Parser::token::VAR_TEMP},
    {"VAR_GLOBAL", grammar::Parser::token::VAR_GLOBAL},
    {"VAR_EXTERNAL", grammar::Parser::token::VAR_EXTERNAL},
    {"VAR_CONFIG", grammar::Parser::token::VAR_CONFIG},
};
inline constexpr Keyword kQualifiers[] = {{"CONSTANT", grammar::Parser::token::CONSTANT},
                                          {"RETAIN", grammar::Parser::token::RETAIN},
                                          {"NON_RETAIN", grammar::Parser::token::NON_RETAIN},
                                          {"PERSISTENT", grammar::Parser::token::PERSISTENT}};
inline constexpr Keyword kOperators[] = {
    {"AND", grammar::Parser::token::AND},           {"OR", grammar::Parser::token::OR},
    {"XOR", grammar::Parser::token::XOR},           {"MOD", grammar::Parser::token::MOD},
    {"AND_THEN", grammar::Parser::token::AND_THEN}, {"OR_ELSE", grammar::Parser::token::OR_ELSE}};
inline constexpr Keyword kLoopJumps[] = {{"EXIT", grammar::Parser::token::EXIT},
                                         {"CONTINUE", grammar::Parser::token::CONTINUE}};

// Types that a '[' follows.
inline constexpr Keyword kBracketTypes[] = {{"ARRAY", grammar::Parser::token::ARRAY},
                                            {"STRING", grammar::Parser::token::STRING},
                                            {"WSTRING", grammar::Parser::token::WSTRING}};

// Words that are names for the scanner, and keywords in their place only.
inline constexpr Keyword kEdges[] = {{"R_EDGE", grammar::Parser::token::R_EDGE},
                                     {"F_EDGE", grammar::Parser::token::F_EDGE}};
inline constexpr Keyword kConfiguration[] = {{"RESOURCE", grammar::Parser::token::RESOURCE},
                                             {"END_RESOURCE", grammar::Parser::token::END_RESOURCE},
                                             {"ON", grammar::Parser::token::ON},
                                             {"TASK", grammar::Parser::token::TASK},
                                             {"WITH", grammar::Parser::token::WITH}};
inline constexpr Keyword kTests[] = {{"TEST", grammar::Parser::token::TEST},
                                     {"SETUP", grammar::Parser::token::SETUP},
                                     {"TEARDOWN", grammar::Parser::token::TEARDOWN}};
inline constexpr Keyword kTestEnds[] = {{"END_TEST", grammar::Parser::token::END_TEST},
                                        {"END_SETUP", grammar::Parser::token::END_SETUP},
                                        {"END_TEARDOWN", grammar::Parser::token::END_TEARDOWN}};

}  // namespace refhost::words
