/* examples/filling_line.st by hand. */
#include <math.h>
#include <string.h>

#include "bench/programs/blocks.h"
#include "bench/programs/scan_pair.h"
#include "velrt.h"

enum { LOADING, FILLING, CAPPING, INSPECTING, STATIONS };
enum { NOTHING, GOOD, SHORT, UNCAPPED, VERDICTS };
enum { RECIPES = 3, KEPT = 3, WORN_EVERY = 7, BATCH = 12, TURNING_TIME = 500 };
#define FLOW 62.5f
#define WORN_FLOW 56.25f

struct recipe {
  char name[21];
  f32 volume;
  f32 tolerance;
  i32 cap_time;
};

struct bottle {
  u8 present;
  u8 capped;
  u32 serial;
  f32 volume;
};

struct filling_valve {
  u8 open;
  f32 volume;
  struct bottle* bottle;
  u8 done;
  i16 pulses;
  i16 wanted;
};

struct basket {
  struct bottle* bottle;
  i16 filled;
  struct bottle ring[KEPT];
  i16 next; /* counted from 1 */
};

static struct {
  struct recipe recipes[RECIPES];
  i16 chosen; /* counted from 1 */
  struct bottle carousel[STATIONS];
  struct bottle fresh;
  u8 turning;
  struct on_delay turn;
  struct on_delay cap;
  struct filling_valve valve;
  struct basket basket;
  struct up_counter batch;
  struct rising_edge seen;
  i16 verdict;
  u8 inspected;
  u32 count[VERDICTS];
  f32 worst;
  i16 station;
  char label[31];
  u16 batches;
} line VARIABLES;

static i16 rounded(f32 value) { return (i16)(value >= 0 ? value + 0.5 : value - 0.5); }

static i16 inspect(const struct bottle* bottle, const struct recipe* recipe) {
  if (!bottle->present) return NOTHING;
  if (!bottle->capped) return UNCAPPED;
  return fabsf(bottle->volume - recipe->volume) > recipe->tolerance ? SHORT : GOOD;
}

static void run_valve(struct filling_valve* valve, u8 open, f32 volume, struct bottle* bottle) {
  valve->open = open;
  valve->volume = volume;
  valve->bottle = bottle;
  if (!open) {
    valve->pulses = 0;
    valve->done = 0;
    return;
  }
  valve->wanted = rounded(volume / FLOW);
  if (bottle->present && valve->pulses < valve->wanted) {
    bottle->volume += bottle->serial % WORN_EVERY == 0 ? WORN_FLOW : FLOW;
    ++valve->pulses;
  }
  valve->done = valve->pulses >= valve->wanted || !bottle->present;
}

static void put_into(struct basket* basket, struct bottle* bottle) {
  basket->bottle = bottle;
  basket->ring[basket->next - 1] = *bottle;
  basket->next = (i16)(basket->next % KEPT + 1);
  if (basket->filled < KEPT) ++basket->filled;
}

static void turn_carousel(void) {
  for (line.station = INSPECTING; line.station > LOADING; --line.station) {
    line.carousel[line.station] = line.carousel[line.station - 1];
  }
  ++line.fresh.serial;
  line.carousel[LOADING] = line.fresh;
  line.turning = 0;
  run_on_delay(&line.turn, 0, TURNING_TIME);
  line.inspected = 0;
}

static void init(void) {
  memset(&line, 0, sizeof line);
  line.recipes[0] = (struct recipe){"water", 500.0f, 5.0f, 400};
  line.recipes[1] = (struct recipe){"syrup", 250.0f, 5.0f, 700};
  line.recipes[2] = (struct recipe){"juice", 750.0f, 50.0f, 400};
  line.chosen = 1;
  line.fresh.present = 1;
  line.turning = 1;
  line.basket.next = 1;
}

static void scan(void) {
  const struct recipe* const recipe = &line.recipes[line.chosen - 1];
  struct bottle* const capped = &line.carousel[CAPPING];
  struct bottle* const last = &line.carousel[INSPECTING];

  if (run_on_delay(&line.turn, line.turning, TURNING_TIME)) turn_carousel();
  run_valve(&line.valve, !line.turning, recipe->volume, &line.carousel[FILLING]);
  run_on_delay(&line.cap, !line.turning && capped->present, recipe->cap_time);
  capped->capped |= line.cap.over;

  if (!line.turning && !line.inspected) {
    line.verdict = inspect(last, recipe);
    ++line.count[line.verdict];
    line.inspected = 1;
    if (line.verdict == SHORT || line.verdict == UNCAPPED) {
      const f32 lacking = recipe->volume - last->volume;
      line.worst = line.worst > lacking ? line.worst : lacking;
      put_into(&line.basket, last);
    }
  }

  run_rising_edge(&line.seen, !line.turning && line.verdict == GOOD);
  if (run_up_counter(&line.batch, line.seen.rises, line.batch.full, BATCH)) ++line.batches;

  char serial[VEL_PRINTED_UNITS];
  const char* const parts[] = {recipe->name, " #", UDINT_TO_STRING(last->serial, serial)};
  vel_string_concat(line.label, sizeof line.label, 3, parts);

  if (!line.turning && line.valve.done && (line.cap.over || !capped->present)) line.turning = 1;
}

const struct scan_program by_hand = {init, scan, {{&line, sizeof line}}};
