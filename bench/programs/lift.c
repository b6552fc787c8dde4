/* examples/lift.st by hand. */
#include <string.h>

#include "bench/programs/blocks.h"
#include "bench/programs/local_io.h"
#include "bench/programs/scan_pair.h"
#include "velrt.h"

enum { WAITING, MOVING, OPENING, BOARDING, CLOSING, STOPPED };
enum { DOWN, NOWHERE, UP };
enum { FLOORS = 4, SCANS_BETWEEN = 30, BOARDING_TIME = 3000, DOOR_TIME = 1000 };
enum { STOP = 4, BARRIER = 5 };                        /* inputs */
enum { MOTOR_UP, MOTOR_DOWN, DOOR };                   /* outputs */
enum { SWITCHES = 0, BUTTONS = 16384, LAMPS = 17409 }; /* byte offsets in the memory */

static struct {
  i16 state;
  i16 heading;
  i16 floor;
  u8 calls;
  u16 visits[FLOORS];
  struct on_delay door_timer;
  struct on_delay boarding_timer;
  u8 stop;
  u8 blocked;
  u16 stops;
  u16 pressed;
  i32 travelled;
  i16 i;
} lift VARIABLES;

static struct {
  i16 position;
  i16 highest;
  u16 wrong;
} shaft VARIABLES;

static u8 is_set(u8 bits, int index) { return bits >> index & 1; }

static i16 next_heading(u8 calls, i16 here, i16 now) {
  u8 above = 0;
  u8 below = 0;
  for (int i = 0; i < FLOORS; ++i) {
    if (!is_set(calls, i)) continue;
    above |= i > here;
    below |= i < here;
  }
  if (above && (now != DOWN || !below)) return UP;
  return below ? DOWN : NOWHERE;
}

static void look_at_buttons(void) {
  const u8 buttons = VEL_MEM(u8, BUTTONS);
  const u8 switches = VEL_MEM(u8, SWITCHES);
  for (i16 i = 0; i < FLOORS; ++i) {
    const u8 boarding = lift.state == BOARDING && i == lift.floor;
    if (is_set(buttons, i) && !is_set(lift.calls, i) && !boarding) {
      lift.calls |= (u8)(1 << i);
      ++lift.pressed;
    }
    if (is_set(switches, i)) lift.floor = i;
  }
  lift.i = FLOORS;
  VEL_MEM(u8, LAMPS) = lift.calls;
}

static void run_state(void) {
  switch (lift.state) {
    case WAITING:
      lift.heading = next_heading(lift.calls, lift.floor, lift.heading);
      if (is_set(lift.calls, lift.floor)) {
        lift.state = OPENING;
      } else if (lift.heading != NOWHERE) {
        lift.state = MOVING;
      }
      break;
    case MOVING:
      write_now(MOTOR_UP, lift.heading == UP);
      write_now(MOTOR_DOWN, lift.heading == DOWN);
      lift.travelled += 100;
      if (is_set(VEL_MEM(u8, SWITCHES) & lift.calls, lift.floor)) {
        fill_now(MOTOR_UP, 2, 0);
        lift.state = OPENING;
      }
      break;
    case OPENING:
      write_now(DOOR, 1);
      if (lift.door_timer.over) {
        ++lift.visits[lift.floor];
        lift.calls &= (u8) ~(1 << lift.floor);
        lift.state = BOARDING;
      }
      break;
    case BOARDING:
      if (lift.boarding_timer.over) lift.state = CLOSING;
      break;
    case CLOSING:
      write_now(DOOR, 0);
      if (lift.blocked) {
        lift.state = OPENING;
      } else if (lift.door_timer.over) {
        lift.state = WAITING;
      }
      break;
    default:
      if (!lift.stop) lift.state = WAITING;
      break;
  }
}

static void run_shaft(void) {
  const u8 up = gbit(OUTPUTS + MOTOR_UP);
  const u8 down = gbit(OUTPUTS + MOTOR_DOWN);
  if ((up && down) || ((up || down) && gbit(OUTPUTS + DOOR))) ++shaft.wrong;
  const int position = shaft.position + up - down;
  const int top = SCANS_BETWEEN * (FLOORS - 1);
  shaft.position = (i16)(position < 0 ? 0 : position > top ? top : position);
  if (shaft.position > shaft.highest) shaft.highest = shaft.position;
  const u8 at_floor = shaft.position % SCANS_BETWEEN == 0;
  VEL_MEM(u8, SWITCHES) = (u8)(at_floor << shaft.position / SCANS_BETWEEN);
}

static void init(void) {
  memset(&lift, 0, sizeof lift);
  lift.heading = NOWHERE;
  memset(&shaft, 0, sizeof shaft);
  VEL_MEM(u8, SWITCHES) = 1;
}

static void scan(void) {
  look_at_buttons();
  lift.stop = read_now(STOP);
  lift.blocked = read_now(BARRIER);
  if (lift.stop && lift.state != STOPPED) {
    fill_now(MOTOR_UP, 3, 0);
    ++lift.stops;
    lift.state = STOPPED;
  }
  run_on_delay(&lift.door_timer, lift.state == OPENING || lift.state == CLOSING, DOOR_TIME);
  run_on_delay(&lift.boarding_timer, lift.state == BOARDING && !lift.blocked, BOARDING_TIME);
  run_state();
  run_shaft();
}

const struct scan_program by_hand = {init, scan, {{&lift, sizeof lift}, {&shaft, sizeof shaft}}};
