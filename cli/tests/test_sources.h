// The C files of unit tests.
#pragma once

#include <string>
#include <vector>

#include "refhost/test_program.h"

namespace velc {

// The C of `count` files, each with its share of the tests and all of the program, which it
// includes as "program.c". Linked together with libvelrun.a they are a program that runs the tests;
// see harness/veltest.h. The first one has the main function. With `coverage` each test stores what
// gcc has counted.
std::vector<std::string> testSources(const refhost::TestProgram& program, std::size_t count,
                                     bool coverage);

}  // namespace velc
