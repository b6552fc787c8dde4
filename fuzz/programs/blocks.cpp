#include <algorithm>

#include "fuzz/programs/programs.h"

namespace generated {
namespace {

using Get = std::function<Wide&(const char*)>;
using Step = void (*)(const Get&);

// Names of one type each, separated by blanks.
Unit block(const char* name, const char* inputs, const char* outputs, Step step) {
  Unit unit{Unit::Standard, name};
  const auto add = [&](const std::string& names, Variable::Role role) {
    for (std::size_t start = 0; start < names.size();) {
      const std::size_t end = std::min(names.find(' ', start), names.size());
      const std::string each = names.substr(start, end - start);
      const bool count = each == "PV" || each == "CV";
      const bool time = each == "PT" || each == "ET" || each == "since" || each == "now";
      unit.variables.push_back({each,
                                &(count  ? type(Type::Signed, 16)
                                  : time ? type(Type::Duration, 32)
                                         : type(Type::Bool, 1)),
                                role});
      start = end + 1;
    }
  };
  add(inputs, Variable::Input);
  add(outputs, Variable::Output);
  add("before since now", Variable::Local);
  unit.step = step;
  return unit;
}

bool rises(const Get& get, const char* input) {
  const bool result = get(input) != 0 && get("before") == 0;
  get("before") = get(input);
  return result;
}

void count(const Get& get, const char* input, const char* sets, Wide start, int by) {
  const bool moves = rises(get, input);
  if (moves) get("CV") = std::clamp<Wide>(get("CV") + by, -32768, 32767);
  if (get(sets) != 0) get("CV") = start;
}

// The time since `since`, up to PT; whether that has passed.
bool passes(const Get& get) {
  const Wide limit = std::max<Wide>(get("PT"), 0);
  const Wide passed = get("now") - get("since");
  get("ET") = std::min(passed, limit);
  return passed >= limit;
}

// TON; TOF is the same of what is not so.
void delay(const Get& get, bool level) {
  const bool active = (get("IN") != 0) == level;
  if (active && get("before") == 0) get("since") = get("now");
  if (!active) {
    get("Q") = level ? 0 : 1;
    get("ET") = 0;
  } else if ((get("Q") != 0) != level && passes(get)) {
    get("Q") = level ? 1 : 0;
  }
  get("before") = active ? 1 : 0;
}

}  // namespace

const std::deque<Unit>& standardBlocks() {
  static const std::deque<Unit> all = {
      block("R_TRIG", "CLK", "Q", [](const Get& get) { get("Q") = rises(get, "CLK"); }),
      block("F_TRIG", "CLK", "Q",
            [](const Get& get) {
              get("Q") = get("CLK") == 0 && get("before") == 0;
              get("before") = get("CLK") == 0;
            }),
      block("SR", "S1 R", "Q1",
            [](const Get& get) { get("Q1") = get("S1") | ((1 - get("R")) & get("Q1")); }),
      block("RS", "S R1", "Q1",
            [](const Get& get) { get("Q1") = (1 - get("R1")) & (get("S") | get("Q1")); }),
      block("CTU", "CU R PV", "Q CV",
            [](const Get& get) {
              count(get, "CU", "R", 0, 1);
              get("Q") = get("CV") >= get("PV");
            }),
      block("CTD", "CD LD PV", "Q CV",
            [](const Get& get) {
              count(get, "CD", "LD", get("PV"), -1);
              get("Q") = get("CV") <= 0;
            }),
      block("TON", "IN PT", "Q ET", [](const Get& get) { delay(get, true); }),
      block("TOF", "IN PT", "Q ET", [](const Get& get) { delay(get, false); }),
      block("TP", "IN PT", "Q ET", [](const Get& get) {
        const bool rose = rises(get, "IN");
        if (get("Q") != 0) {
          if (passes(get)) get("Q") = 0;
        } else if (rose) {
          get("since") = get("now");
          get("ET") = 0;
          get("Q") = get("PT") > 0;
        }
        if (get("Q") == 0 && get("IN") == 0) get("ET") = 0;
      })};
  return all;
}

}  // namespace generated
