#include "hostkit/operator_inputs.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

TEST(OperatorInputs, HaveAPosition) {
  const std::tuple<const char*, const char*, int> rows[] = {
      {"sel", "in1", 2},    {"SEL", "IN", -1},        {"LIMIT", "mx", 2},
      {"EXPT", "IN2", 1},   {"EXPT", "IN", -1},       {"SQRT", "in", 0},
      {"SQRT", "IN1", -1},  {"INT_TO_REAL", "IN", 0}, {"MUX", "k", 0},
      {"MUX", "IN0", 1},    {"mux", "in12", 13},      {"MUX", "IN", -1},
      {"MUX", "IN-1", -1},  {"MUX", "IN1x", -1},      {"MIN", "IN1", 0},
      {"max", "IN2", 1},    {"MIN", "IN0", -1},       {"IWRBIT", "OUT", 0},
      {"IRDBIT", "OUT", 1}, {"SHL", "N", 1},          {"MUX", "IN99999999999999999999", -1}};
  for (const auto& [name, formal, position] : rows) {
    EXPECT_EQ(hostkit::operatorInput(name, formal), position) << name << " " << formal;
  }
}

}  // namespace
