/* A soft PLC: runs a translated program cyclically, with its device memory served over Modbus/TCP.
 * The program is in plc_program.c. Compile it with PLC_LOCALIO, the text that velc got as
 * --localio, in quotes, and with the sizes of device memory of the program in plc_memory.h.
 *
 * The main thread scans, and a second one serves the clients (clients.c). */
#include "soft_plc.h"

#include <arpa/inet.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <unistd.h>

/* See plc_program.c; `time` is in milliseconds since the start. */
void vel_plc_init(void);
void vel_plc_scan(u64 time);

pthread_mutex_t lock;
u8 image[IMAGE];
u8 written[IMAGE];
static volatile sig_atomic_t stopped;
static u32 first_input, first_output; /* bits of `_m`, where the local ranges begin */

/* --- The exchange between program and image, in the thread that scans --- */

static void begin_scan(void) {
  pthread_mutex_lock(&lock);
  for (u32 i = 0; i < IMAGE; ++i) {
    if (written[i]) _m[i] = image[i];
  }
  memset(written, 0, sizeof written);
  pthread_mutex_unlock(&lock);
}

/* What a client has written during the scan is not lost: it holds from the next scan on. */
static void end_scan(void) {
  pthread_mutex_lock(&lock);
  for (u32 i = 0; i < IMAGE; ++i) {
    if (!written[i]) image[i] = _m[i];
  }
  pthread_mutex_unlock(&lock);
}

static void copy_bits(u8* to, const u8* from, u32 first, u32 count) {
  pthread_mutex_lock(&lock);
  for (u32 a = first; a < first + count && a / 8 < IMAGE; ++a) {
    const u8 mask = (u8)(1u << a % 8);
    to[a / 8] = (u8)((to[a / 8] & ~mask) | (from[a / 8] & mask));
  }
  pthread_mutex_unlock(&lock);
}

static void update_input(u32 at, u32 count) { copy_bits(_m, image, first_input + at, count); }

static void update_output(u32 at, u32 count) { copy_bits(image, _m, first_output + at, count); }

struct vel_platform_api __platform_api = {update_input, update_output};

/* --- The scans --- */

static void stop(int signal) {
  (void)signal;
  stopped = 1;
}

static i64 now(void) {
  struct timespec time;
  clock_gettime(CLOCK_MONOTONIC, &time);
  return time.tv_sec * 1000000000LL + time.tv_nsec;
}

/* Scans every `cycle` nanoseconds. A scan that takes longer delays the next; none is made up for.
 */
static void run(i64 cycle) {
  unsigned long scans = 0, overruns = 0;
  const i64 begin = now();
  i64 due = begin, late = 0;
  vel_plc_init();
  for (; !stopped; ++scans) {
    const i64 time = (due - begin) / 1000000;
    vel_scan_time = (u32)time;
    begin_scan();
    vel_plc_scan((u64)time);
    end_scan();
    due += cycle;
    if (now() > due) {
      ++overruns;
      due = now();
    }
    const struct timespec wake = {due / 1000000000, due % 1000000000};
    clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &wake, NULL);
    if (!stopped && now() - due > late) late = now() - due;
  }
  printf("%lu scans, %lu too long, woken at most %lld us late\n", scans, overruns,
         (long long)late / 1000);
}

_Noreturn static void refuse(void) {
  fputs("usage: soft-plc [-a IPV4-ADDRESS] [-p PORT] [-c MILLISECONDS] [-w MILLISECONDS]\n",
        stderr);
  exit(2);
}

static int number(const char* text, long least, long most) {
  char* end;
  const long value = strtol(text, &end, 10);
  if (end == text || *end != '\0' || value < least || value > most) refuse();
  return (int)value;
}

int main(int argc, char** argv) {
  enum { DAY = 24 * 60 * 60 * 1000 };
  const char* address = "127.0.0.1";
  int port = 502, cycle = 10, watchdog = 0;
  for (int option; (option = getopt(argc, argv, "a:p:c:w:")) != -1;) {
    if (option == '?') refuse();
    if (option == 'a') address = optarg;
    if (option == 'p') port = number(optarg, 0, 65535);
    if (option == 'c') cycle = number(optarg, 1, DAY);
    if (option == 'w') watchdog = number(optarg, 1, DAY);
  }
  if (optind < argc || inet_pton(AF_INET, address, &(struct in_addr){0}) != 1) refuse();
  sscanf(PLC_LOCALIO, "%*2c%u-%*u;%*2c%u", &first_input, &first_output);
  /* While the scan waits for the lock, the thread that has it gets the priority of the scan. */
  pthread_mutexattr_t attributes;
  pthread_mutexattr_init(&attributes);
  pthread_mutexattr_setprotocol(&attributes, PTHREAD_PRIO_INHERIT);
  pthread_mutex_init(&lock, &attributes);
  signal(SIGINT, stop);
  signal(SIGTERM, stop);
  port = start_service(address, port, watchdog);
  printf("Modbus/TCP on %s:%d, a scan every %d ms\n", address, port, cycle);
  fflush(stdout);
  run(cycle * 1000000LL);
  return EXIT_SUCCESS;
}
