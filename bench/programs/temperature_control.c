/* examples/temperature_control.st by hand. */
#include <math.h>
#include <string.h>

#include "bench/programs/scan_pair.h"
#include "velrt.h"

enum { RAMPING, SOAKING, COOLING, DONE };
enum { SLOT_SCANS = 10, SOAK_SCANS = 1800, DELAY = 15 };
#define AMBIENT 20.0

struct gains {
  f64 kp;
  f64 ti;
  f64 td;
};

struct pid {
  f64 set_point;
  f64 actual;
  struct gains gains;
  f64 cycle;
  u8 reset;
  f64 output;
  u8 saturated;
  f64 integral;
  f64 before;
  f64 slope;
  f64 wanted;
  u8 started;
};

struct oven {
  u8 heater;
  f64 sensor;
  i16 delay; /* DELAY, AMBIENT: constants that are shown */
  f64 ambient;
  f64 inside;
  f64 past[DELAY];
  i16 head;
};

static struct {
  i16 slot_scans; /* SLOT_SCANS, SOAK_SCANS */
  i32 soak_scans;
  f64 target;
  f64 set_point;
  i16 phase;
  struct pid controller;
  struct oven oven;
  struct gains tuned;
  i16 slot;
  i16 duty;
  u8 heater;
  i32 soaked;
  f64 highest;
  i32 below;
  i32 above;
  u8 alarm;
  f64 energy;
  char report[41];
} plant VARIABLES;

static f64 limit(f64 low, f64 value, f64 high) {
  return value < low ? low : value > high ? high : value;
}

static f64 ramp(f64 now, f64 target, f64 step) { return now + limit(-step, target - now, step); }

static void run_pid(struct pid* pid) {
  if (pid->reset || !pid->started) {
    pid->integral = 0;
    pid->before = pid->actual;
    pid->started = 1;
  }
  const f64 proportional = pid->gains.kp * (pid->set_point - pid->actual);
  pid->slope = (pid->actual - pid->before) / pid->cycle;
  pid->before = pid->actual;
  pid->wanted = proportional + pid->integral - pid->gains.kp * pid->gains.td * pid->slope;
  pid->output = limit(0, pid->wanted, 100);
  pid->saturated = pid->output != pid->wanted;
  if (!pid->saturated) pid->integral += proportional * pid->cycle / pid->gains.ti;
}

static void run_oven(struct oven* oven) {
  oven->inside = oven->inside + (oven->heater ? 0.25 : 0.0) - (oven->inside - AMBIENT) * 0.0008;
  oven->sensor = oven->past[oven->head];
  oven->past[oven->head] = oven->inside;
  oven->head = (i16)((oven->head + 1) % DELAY);
}

static void init(void) {
  memset(&plant, 0, sizeof plant);
  plant.slot_scans = SLOT_SCANS;
  plant.soak_scans = SOAK_SCANS;
  plant.target = 180;
  plant.set_point = 20;
  plant.controller.gains = (struct gains){4, 40, 2};
  plant.controller.cycle = 0.1;
  plant.oven.delay = DELAY;
  plant.oven.ambient = AMBIENT;
  plant.oven.sensor = plant.oven.inside = 20;
  for (int i = 0; i < DELAY; ++i) plant.oven.past[i] = 20;
  plant.tuned = (struct gains){3, 80, 2};
}

static void run_phase(void) {
  const f64 sensor = plant.oven.sensor;
  switch (plant.phase) {
    case RAMPING:
      plant.set_point = ramp(plant.set_point, plant.target, 0.15);
      if (fabs(sensor - plant.target) < 0.5) plant.phase = SOAKING;
      break;
    case SOAKING:
      ++plant.soaked;
      if (sensor < plant.target - 1) ++plant.below;
      if (sensor > plant.target + 1) ++plant.above;
      if (plant.soaked >= SOAK_SCANS) plant.phase = COOLING;
      break;
    case COOLING:
      plant.set_point = ramp(plant.set_point, 20, 0.5);
      if (sensor < 60) plant.phase = DONE;
      break;
    default:
      plant.set_point = 20;
      break;
  }
}

static void scan(void) {
  run_phase();

  struct pid* const controller = &plant.controller;
  controller->set_point = plant.set_point;
  controller->actual = plant.oven.sensor;
  controller->gains = plant.tuned;
  controller->reset = plant.phase == DONE;
  run_pid(controller);
  if (plant.slot == 0) plant.duty = (i16)(controller->output * SLOT_SCANS / 100 + 0.5);
  plant.heater = plant.slot < plant.duty;
  plant.slot = (i16)((plant.slot + 1) % SLOT_SCANS);

  plant.oven.heater = plant.heater;
  run_oven(&plant.oven);
  plant.highest = plant.highest > plant.oven.sensor ? plant.highest : plant.oven.sensor;
  if (plant.heater) plant.energy += 1;
  plant.alarm |= plant.highest > plant.target + 10;

  char highest[VEL_PRINTED_UNITS];
  const char* const parts[] = {"peak ", LREAL_TO_STRING(plant.highest, highest), " C"};
  vel_string_concat(plant.report, sizeof plant.report, 3, parts);
}

const struct scan_program by_hand = {init, scan, {{&plant, sizeof plant}}};
