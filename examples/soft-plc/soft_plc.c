/* A soft PLC: runs a translated program cyclically, with its device memory served over Modbus/TCP.
 * The main thread scans. Each client has a thread of its own, and sees a copy of the device memory,
 * so that no client delays a scan. The Makefile gives the macros that begin with PLC_ and the sizes
 * of device memory with which the program was translated. */
#include <arpa/inet.h>
#include <errno.h>
#include <modbus/modbus.h>
#include <pthread.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/socket.h>
#include <time.h>
#include <unistd.h>

#include "plc_memory.h"
#include "velrt.h"

/* The program. */
void PLC_INIT(void);
#ifdef PLC_SCAN
void PLC_SCAN(void);
static const vel_task tasks[] = {{"scan", 0, VEL_NO_TASK, NULL, PLC_SCAN}, {0}};
#else
extern const vel_task PLC_TASKS[];
static const vel_task* const tasks = PLC_TASKS;
#endif

enum {
  IMAGE = VEL_MEMORY_M + VEL_MEMORY_I + VEL_MEMORY_Q, /* bytes */
  INPUTS = VEL_MEMORY_M,                              /* the first byte of %I */
  OUTPUTS = INPUTS + VEL_MEMORY_I,                    /* the first byte of %Q */
  MARKERS = 4096,                                     /* the holding register of %MW0 */
  CLIENTS = 16                                        /* at once */
};
_Static_assert(VEL_MEMORY_I <= 2 * MARKERS, "inputs and markers share the holding registers");

/* For the next three; held only as long as copying takes. */
static pthread_mutex_t lock;
static u8 image[IMAGE];   /* the memory as clients see it */
static u8 written[IMAGE]; /* 1 for what they have written since the last scan began */
static i64 heard;         /* the time of their last request */

static i64 watchdog; /* nanoseconds without a request until inputs become 0; 0 for never */
static volatile sig_atomic_t stopped;

static i64 now(void) {
  struct timespec time;
  clock_gettime(CLOCK_MONOTONIC, &time);
  return time.tv_sec * 1000000000LL + time.tv_nsec;
}

/* --- The exchange between program and image --- */

static void begin_scan(void) {
  pthread_mutex_lock(&lock);
  if (watchdog != 0 && now() - heard > watchdog) {
    memset(image + INPUTS, 0, VEL_MEMORY_I);
    memset(written + INPUTS, 1, VEL_MEMORY_I);
  }
  for (int i = 0; i < IMAGE; ++i) {
    if (written[i]) _m[i] = image[i];
  }
  memset(written, 0, sizeof written);
  pthread_mutex_unlock(&lock);
}

/* What a client has written during the scan is not lost: it holds from the next scan on. */
static void end_scan(void) {
  pthread_mutex_lock(&lock);
  for (int i = 0; i < IMAGE; ++i) {
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

/* Direct I/O, in the middle of a scan: `at` counts from the begin of the local range. */
static void update_input(u32 at, u32 count) { copy_bits(_m, image, PLC_INPUT + at, count); }
static void update_output(u32 at, u32 count) { copy_bits(image, _m, PLC_OUTPUT + at, count); }
struct vel_platform_api __platform_api = {update_input, update_output};

/* --- Modbus --- */

static int listener;                                          /* where clients connect */
static pthread_mutex_t answering = PTHREAD_MUTEX_INITIALIZER; /* for the tables */
static modbus_mapping_t* tables; /* what libmodbus reads and writes for a request */

static void fill_tables(void) {
  pthread_mutex_lock(&lock);
  heard = now();
  modbus_set_bits_from_bytes(tables->tab_bits, 0, 8 * VEL_MEMORY_I, image + INPUTS);
  modbus_set_bits_from_bytes(tables->tab_input_bits, 0, 8 * VEL_MEMORY_Q, image + OUTPUTS);
  memcpy(tables->tab_registers, image + INPUTS, VEL_MEMORY_I);
  memcpy(tables->tab_registers + MARKERS, image, VEL_MEMORY_M);
  memcpy(tables->tab_input_registers, image + OUTPUTS, VEL_MEMORY_Q);
  pthread_mutex_unlock(&lock);
}

/* Takes what a request has written into the tables, changed or not. */
static void take(const u8* request) {
  const int function = request[7], coils = function == 5 || function == 15;
  const int several = function == 15 || function == 16 || function == 23;
  if (!coils && !several && function != 6 && function != 22) return;
  const u8* const range = request + (function == 23 ? 12 : 8);
  const int first = range[0] << 8 | range[1];
  const int end = first + (several ? range[2] << 8 | range[3] : 1);
  pthread_mutex_lock(&lock);
  for (int i = first; i < end; ++i) {
    if (coils) {
      image[INPUTS + i / 8] = modbus_get_byte_from_bits(tables->tab_bits, i / 8 * 8, 8);
      written[INPUTS + i / 8] = 1;
    } else if (i >= MARKERS || 2 * i < VEL_MEMORY_I) {
      const int at = i >= MARKERS ? 2 * (i - MARKERS) : INPUTS + 2 * i;
      memcpy(image + at, tables->tab_registers + i, 2);
      memset(written + at, 1, 2);
    }
  }
  pthread_mutex_unlock(&lock);
}

/* Waits for a request, and answers it. Returns 0 if the client is gone, or has to go. */
static int serve_request(modbus_t* modbus) {
  u8 request[MODBUS_TCP_MAX_ADU_LENGTH];
  const int size = modbus_receive(modbus, request);
  if (size < 0) return 0;
  pthread_mutex_lock(&answering);
  fill_tables();
  int sent = modbus_reply(modbus, request, size, tables);
  if (sent < 0 && errno == ENOPROTOOPT) { /* libmodbus knows function 7, but does not answer it */
    sent = modbus_reply_exception(modbus, request, MODBUS_EXCEPTION_ILLEGAL_FUNCTION);
  }
  if (sent > 9) take(request); /* a refusal has 9 bytes */
  pthread_mutex_unlock(&answering);
  return sent >= 0;
}

/* Serves one client after another. */
static void* serve(void* modbus) {
  modbus_set_response_timeout(modbus, 0, 1); /* libmodbus sleeps so long before it refuses */
  while (1) {
    const int client = accept(listener, NULL, NULL);
    if (client < 0) continue;
    setsockopt(client, SOL_SOCKET, SO_SNDTIMEO, &(struct timeval){0, 100000},
               sizeof(struct timeval));
    setsockopt(client, SOL_SOCKET, SO_KEEPALIVE, &(int){1}, sizeof(int));
    modbus_set_socket(modbus, client);
    while (serve_request(modbus)) continue;
    close(client);
  }
  return NULL;
}

/* Returns the port, and ends the program if clients cannot be served. */
static int start_service(const char* address, int port) {
  struct sockaddr_in bound = {0};
  pthread_t thread;
  tables = modbus_mapping_new(8 * VEL_MEMORY_I, 8 * VEL_MEMORY_Q, MARKERS + VEL_MEMORY_M / 2,
                              VEL_MEMORY_Q / 2);
  listener = modbus_tcp_listen(modbus_new_tcp(address, port), CLIENTS);
  int failed = tables == NULL || listener < 0;
  for (int i = 0; !failed && i < CLIENTS; ++i) {
    failed = pthread_create(&thread, NULL, serve, modbus_new_tcp(NULL, 0));
  }
  if (failed) {
    fprintf(stderr, "soft-plc: %s:%d: %s\n", address, port, modbus_strerror(errno));
    exit(EXIT_FAILURE);
  }
  getsockname(listener, (struct sockaddr*)&bound, &(socklen_t){sizeof bound});
  return ntohs(bound.sin_port);
}

/* --- The scans --- */

static void stop(int signal) { stopped = signal; }

/* Scans every `cycle` nanoseconds. A scan that takes longer delays the next ones. */
static void run(i64 cycle) {
  unsigned long scans = 0, overruns = 0;
  const i64 begin = now();
  long long due = begin, late = 0;
  size_t count = 0;
  while (tasks[count].run != NULL) ++count;
  vel_task_state* const states = calloc(count + 1, sizeof *states);
  PLC_INIT();
  for (; states != NULL && !stopped; ++scans) {
    const i64 time = (due - begin) / 1000000;
    vel_scan_time = (u32)time;
    begin_scan();
    vel_tasks_run(tasks, states, (u64)time);
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
  printf("%lu scans, %lu too long, woken at most %lld us late\n", scans, overruns, late / 1000);
}

_Noreturn static void refuse(void) {
  fputs("usage: soft-plc [-a IPV4-ADDRESS] [-p PORT] [-c MS] [-w MS]\n", stderr);
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
  int port = 502, cycle = 10;
  for (int option; (option = getopt(argc, argv, "a:p:c:w:")) != -1;) {
    if (option == '?') refuse();
    if (option == 'a') address = optarg;
    if (option == 'p') port = number(optarg, 0, 65535);
    if (option == 'c') cycle = number(optarg, 1, DAY);
    if (option == 'w') watchdog = number(optarg, 1, DAY) * 1000000LL;
  }
  if (optind < argc || inet_pton(AF_INET, address, &(struct in_addr){0}) != 1) refuse();
  /* While the scan waits for the lock, the thread that has it gets the priority of the scan. */
  pthread_mutexattr_t attributes;
  pthread_mutexattr_init(&attributes);
  pthread_mutexattr_setprotocol(&attributes, PTHREAD_PRIO_INHERIT);
  pthread_mutex_init(&lock, &attributes);
  heard = now();
  signal(SIGINT, stop);
  signal(SIGTERM, stop);
  port = start_service(address, port);
  printf("Modbus/TCP on %s:%d, a scan every %d ms\n", address, port, cycle);
  fflush(stdout);
  run(cycle * 1000000LL);
  return EXIT_SUCCESS;
}
