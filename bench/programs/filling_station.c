/* examples/filling_station.st by hand. */
#include <string.h>

#include "bench/programs/scan_pair.h"
#include "velrt.h"

struct pump {
  u8 on;
  f32 flow;
  u16 starts;
  u8 was_on;
};

static struct {
  f32 tank_litres;
  i16 request;
  i16 target;
  i16 raw;
  f32 level;
  f32 highest;
  struct pump feed;
  u16 starts;
  i16 phase;
  char display[17];
  u8 lamps;
  i32 scans;
  i32 elapsed;
} station VARIABLES;

static i16 limit(i16 low, i16 value, i16 high) {
  return value < low ? low : value > high ? high : value;
}

static i16 rounded(f32 value) { return (i16)(value >= 0 ? value + 0.5 : value - 0.5); }

static void run_pump(struct pump* pump) {
  if (pump->on && !pump->was_on) ++pump->starts;
  pump->was_on = pump->on;
  pump->flow = pump->on ? 12.5f : 0.0f;
}

static void init(void) {
  memset(&station, 0, sizeof station);
  station.tank_litres = 400.0f;
  station.request = 250;
}

static void scan(void) {
  station.target = limit(0, station.request, 350);
  station.level = (f32)limit(0, station.raw, 27648) * station.tank_litres / 27648.0f;
  station.highest = station.highest > station.level ? station.highest : station.level;

  switch (station.phase) {
    case 0:
      vel_string_set(station.display, sizeof station.display, "waiting");
      station.lamps = 0x01;
      if (station.target > 0) station.phase = 1;
      break;
    case 1:
      vel_string_set(station.display, sizeof station.display, "filling");
      station.lamps = 0x12;
      if (station.level >= (f32)station.target) station.phase = 2;
      break;
    default:
      vel_string_set(station.display, sizeof station.display, "holding");
      station.lamps = 0x24;
      break;
  }

  station.feed.on = station.phase == 1;
  run_pump(&station.feed);
  station.starts = station.feed.starts;
  station.raw = (i16)(station.raw + rounded(station.feed.flow * 27648.0f / station.tank_litres));

  station.scans = (i32)((u32)station.scans + 1);
  station.elapsed = (i32)((u32)station.scans * 100);
}

const struct scan_program by_hand = {init, scan, {{&station, sizeof station}}};
