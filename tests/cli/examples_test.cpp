// The larger examples over many scans, against models of the same machines.
#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>

#include "tests/cli/velc_fixture.h"

namespace velc {
namespace {

class Examples : public Velc {
 protected:
  // The variables that velc prints, by name.
  std::map<std::string, std::string> run(const std::string& arguments) const {
    const Outcome outcome = velc("run " EXAMPLES "/" + arguments);
    EXPECT_EQ(0, outcome.code) << outcome.err;
    EXPECT_EQ("", outcome.err);
    std::map<std::string, std::string> values;
    std::istringstream lines(outcome.out);
    for (std::string line; std::getline(lines, line);) {
      const std::size_t at = line.find(" = ");
      values[line.substr(0, at)] = line.substr(at + 3);
    }
    return values;
  }
};

struct Oven {
  double setPoint = 20, sensor = 20, highest = 0, energy = 0;
  int phase = 0, soaked = 0;
};

Oven heat(int scans) {
  Oven o;
  double inside = 20, integral = 0, before = 0, past[15];
  std::fill(std::begin(past), std::end(past), 20.0);
  bool started = false;
  int duty = 0;
  const auto ramp = [&](double target, double step) {
    o.setPoint += std::max(-step, std::min(target - o.setPoint, step));
  };
  for (int scan = 0; scan < scans; ++scan) {
    if (o.phase == 0) {
      ramp(180, 0.15);
      if (std::fabs(o.sensor - 180) < 0.5) o.phase = 1;
    } else if (o.phase == 1) {
      if (++o.soaked == 1800) o.phase = 2;
    } else if (o.phase == 2) {
      ramp(20, 0.5);
      if (o.sensor < 60) o.phase = 3;
    } else {
      o.setPoint = 20;
    }
    if (o.phase == 3 || !started) {
      integral = 0;
      before = o.sensor;
      started = true;
    }
    const double error = o.setPoint - o.sensor;
    const double wanted = 3 * error + integral - 6 * ((o.sensor - before) / 0.1);
    before = o.sensor;
    const double output = std::max(0.0, std::min(wanted, 100.0));
    if (output == wanted) integral += 3 * error * 0.1 / 80;
    if (scan % 10 == 0) duty = static_cast<int>(std::lround(output / 10));
    const bool heater = scan % 10 < duty;
    inside += (heater ? 0.25 : 0) - (inside - 20) * 0.0008;
    o.sensor = past[scan % 15];
    past[scan % 15] = inside;
    o.highest = std::max(o.highest, o.sensor);
    o.energy += heater;
  }
  return o;
}

TEST_F(Examples, TemperatureControlHoldsTheOven) {
  for (const int scans : {500, 1500, 3200, 6000}) {
    SCOPED_TRACE(scans);
    const auto values = run("temperature_control.st --scans " + std::to_string(scans));
    const Oven expected = heat(scans);
    EXPECT_NEAR(expected.setPoint, std::stod(values.at("setPoint")), 1e-9);
    EXPECT_NEAR(expected.highest, std::stod(values.at("highest")), 1e-9);
    EXPECT_EQ(expected.energy, std::stod(values.at("energy")));
    EXPECT_EQ(std::to_string(expected.soaked), values.at("soaked"));
    EXPECT_EQ("0", values.at("above"));
    EXPECT_EQ("FALSE", values.at("alarm"));
  }
}

// A turn takes five scans, filling one for each pulse, and capping its time; the first
// bottle is filled while nothing is to be capped.
TEST_F(Examples, FillingLineSortsOutWhatIsShort) {
  struct Row {
    int recipe, pulses, capScans;
    const char* worst;
  };
  for (const Row& row : {Row{1, 8, 4, "50.0"}, Row{2, 4, 7, "25.0"}, Row{3, 12, 4, "75.0"}}) {
    for (const int scans : {30, 500, 2000}) {
      SCOPED_TRACE(row.recipe * 10000 + scans);
      const auto values =
          run("filling_line.st --cycle T#100ms --set chosen=" + std::to_string(row.recipe) +
              " --scans " + std::to_string(scans));
      const int first = 11 + 5 + row.pulses;  // is capped from then on
      const int period = 6 + std::max(row.pulses - 1, row.capScans);
      const int last = scans - 1 - first - period;  // since the first inspection
      const int inspected = last < 0 ? 0 : last / period + 1;
      const int faulty = inspected / 7;
      EXPECT_EQ(
          "[3, " + std::to_string(inspected - faulty) + ", " + std::to_string(faulty) + ", 0]",
          values.at("count"));
      EXPECT_EQ(faulty == 0 ? "0.0" : row.worst, values.at("worst"));
      EXPECT_EQ(std::to_string((inspected - faulty) / 12), values.at("batches"));
    }
  }
}

// Three seconds from floor to floor, one for each movement of the door, three to board. The
// button stays pressed, so that the door opens again, every 54 scans with those between.
TEST_F(Examples, LiftAnswersACallAndStopsInAnEmergency) {
  const std::string common =
      "lift.st --cycle T#100ms --localio 'I:131072-131088;Q:139264-139280;' --set %IX0.2=TRUE ";
  for (const int scans : {60, 61, 75, 400}) {
    SCOPED_TRACE(scans);
    const auto values = run(common + "--show %QB0 --show %QB1 --scans " + std::to_string(scans));
    EXPECT_EQ(std::to_string(std::min(scans - 1, 60)), values.at("Shaft.position"));
    EXPECT_EQ("0", values.at("Shaft.wrong"));
    const int visits = scans <= 72 ? 0 : (scans - 73) / 54 + 1;
    EXPECT_EQ("[0, 0, " + std::to_string(visits) + ", 0]", values.at("Lift.visits"));
    EXPECT_EQ(scans <= 61 ? "16#1" : "16#4", values.at("%QB0"));
  }
  const auto stopped = run(common + "--set %IX0.4=TRUE --show %QB0 --scans 200");
  EXPECT_EQ("0", stopped.at("Shaft.position"));
  EXPECT_EQ("16#0", stopped.at("%QB0"));
  EXPECT_EQ("1", stopped.at("Lift.stops"));
}

}  // namespace
}  // namespace velc
