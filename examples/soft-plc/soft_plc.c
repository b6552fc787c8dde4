/* A soft PLC: runs a translated program cyclically, with its device memory served over Modbus/TCP.
 * Compile it with
 *   PLC_SOURCE   the C of the program, in quotes
 *   PLC_INIT     its function NAME_init
 *   PLC_SCAN     its function NAME_scan, or PLC_TASKS, the table of a configuration
 *   PLC_LOCALIO  the text that velc got as --localio, in quotes
 *
 * The main thread scans. A second one serves the clients. They share `image`, a copy of the device
 * memory, and touch it for as long as it takes to copy, so that no client delays a scan. */
#include <errno.h>
#include <modbus/modbus.h>
#include <netinet/in.h>
#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/socket.h>
#include <time.h>
#include <unistd.h>

#include PLC_SOURCE

enum {
  IMAGE = VEL_MEMORY_M + VEL_MEMORY_I + VEL_MEMORY_Q, /* bytes */
  INPUTS = VEL_MEMORY_M,                              /* the first byte of %I */
  OUTPUTS = VEL_MEMORY_M + VEL_MEMORY_I,              /* the first byte of %Q */
  MARKERS = 4096,                                     /* the holding register of %MW0 */
  CLIENTS = 16
};
_Static_assert(VEL_MEMORY_I <= 2 * MARKERS && VEL_MEMORY_Q <= 8192 &&
                   VEL_MEMORY_M <= 2 * (65536 - MARKERS),
               "Modbus numbers coils and registers with 16 bits");

static pthread_mutex_t lock;
static u8 image[IMAGE];   /* as clients see the memory */
static u8 written[IMAGE]; /* 1 for what they have written since the last scan began */
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

/* --- The clients, in the other thread --- */

enum { COILS = 8 * VEL_MEMORY_I, REGISTERS = MARKERS + VEL_MEMORY_M / 2 };

static void write_byte(int i, u8 value) {
  image[i] = value;
  written[i] = 1;
}

static void clear_inputs(void) {
  pthread_mutex_lock(&lock);
  for (int i = INPUTS; i < OUTPUTS; ++i) write_byte(i, 0);
  pthread_mutex_unlock(&lock);
}

static void show(modbus_mapping_t* tables, u8* shown) {
  pthread_mutex_lock(&lock);
  memcpy(shown, image, IMAGE);
  pthread_mutex_unlock(&lock);
  modbus_set_bits_from_bytes(tables->tab_bits, 0, COILS, shown + INPUTS);
  modbus_set_bits_from_bytes(tables->tab_input_bits, 0, 8 * VEL_MEMORY_Q, shown + OUTPUTS);
  memcpy(tables->tab_registers, shown + INPUTS, VEL_MEMORY_I);
  memcpy(tables->tab_registers + MARKERS, shown, VEL_MEMORY_M);
  memcpy(tables->tab_input_registers, shown + OUTPUTS, VEL_MEMORY_Q);
}

/* Takes the registers that have changed from a table of which the first is at byte `begin`. */
static void take_registers(const u16* table, const u8* shown, int begin, int end) {
  for (int i = begin; i < end; i += 2, ++table) {
    if (memcmp(table, shown + i, 2) == 0) continue;
    write_byte(i, (u8)*table);
    write_byte(i + 1, (u8)(*table >> 8));
  }
}

/* Coils and registers show the same inputs; a request changes only one of them. */
static void take_changes(const modbus_mapping_t* tables, const u8* shown) {
  pthread_mutex_lock(&lock);
  for (int i = INPUTS; i < OUTPUTS; ++i) {
    const u8 coils = modbus_get_byte_from_bits(tables->tab_bits, 8 * (i - INPUTS), 8);
    if (coils != shown[i]) write_byte(i, coils);
  }
  take_registers(tables->tab_registers, shown, INPUTS, OUTPUTS);
  take_registers(tables->tab_registers + MARKERS, shown, 0, VEL_MEMORY_M);
  pthread_mutex_unlock(&lock);
}

/* Answers a request from a copy of the image, since sending may take long. Returns 0 if the client
 * is gone. */
static int answer(modbus_t* modbus, modbus_mapping_t* tables) {
  static u8 shown[IMAGE];
  u8 request[MODBUS_TCP_MAX_ADU_LENGTH];
  const int size = modbus_receive(modbus, request);
  if (size < 0) return 0;
  show(tables, shown);
  const int sent = modbus_reply(modbus, request, size, tables);
  take_changes(tables, shown);
  return sent >= 0;
}

static modbus_t* modbus;
static int listener;      /* the socket on which clients connect */
static int watchdog = -1; /* milliseconds without a request until inputs become 0; -1 for never */

static void* serve(void* unused) {
  const int bits = 8 * VEL_MEMORY_Q, words = VEL_MEMORY_Q / 2;
  modbus_mapping_t* const tables = modbus_mapping_new(COILS, bits, REGISTERS, words);
  struct pollfd sockets[1 + CLIENTS] = {{listener, POLLIN, 0}};
  nfds_t count = 1;
  sigset_t signals;
  sigfillset(&signals); /* they end the sleep between the scans */
  pthread_sigmask(SIG_BLOCK, &signals, NULL);
  while (tables != NULL) {
    const int ready = poll(sockets, count, watchdog);
    if (ready == 0) clear_inputs();
    for (nfds_t i = count - 1; ready > 0 && i > 0; --i) {
      if (sockets[i].revents == 0) continue;
      modbus_set_socket(modbus, sockets[i].fd);
      if (answer(modbus, tables)) continue;
      close(sockets[i].fd);
      sockets[i] = sockets[--count];
    }
    if (ready <= 0 || sockets[0].revents == 0) continue;
    const int client = accept(listener, NULL, NULL);
    if (client >= 0 && count > CLIENTS) close(client);
    if (client < 0 || count > CLIENTS) continue;
    setsockopt(client, SOL_SOCKET, SO_SNDTIMEO, &(struct timeval){1, 0}, sizeof(struct timeval));
    setsockopt(client, SOL_SOCKET, SO_KEEPALIVE, &(int){1}, sizeof(int));
    sockets[count++] = (struct pollfd){client, POLLIN, 0};
  }
  return unused;
}

/* Returns the port on which clients can connect. */
static int start_service(const char* address, int port) {
  struct sockaddr_in bound = {0};
  pthread_t thread;
  modbus = modbus_new_tcp(address, port);
  listener = modbus == NULL ? -1 : modbus_tcp_listen(modbus, CLIENTS);
  if (listener < 0 || pthread_create(&thread, NULL, serve, NULL) != 0) {
    fprintf(stderr, "soft-plc: %s:%d: %s\n", address, port, modbus_strerror(errno));
    exit(EXIT_FAILURE);
  }
  getsockname(listener, (struct sockaddr*)&bound, &(socklen_t){sizeof bound});
  return ntohs(bound.sin_port);
}

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
  PLC_INIT();
  for (; !stopped; ++scans) {
    const i64 time = (due - begin) / 1000000;
    vel_scan_time = (u32)time;
    begin_scan();
#ifdef PLC_TASKS
    static vel_task_state states[sizeof PLC_TASKS / sizeof PLC_TASKS[0]];
    vel_tasks_run(PLC_TASKS, states, (u64)time);
#else
    PLC_SCAN();
#endif
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

int main(int argc, char** argv) {
  const char* address = "127.0.0.1";
  int port = 502, cycle = 10;
  for (int option; (option = getopt(argc, argv, "a:p:c:w:")) != -1;) {
    if (option == '?') return EXIT_FAILURE;
    if (option == 'a') address = optarg;
    if (option == 'p') port = atoi(optarg);
    if (option == 'c') cycle = atoi(optarg);
    if (option == 'w') watchdog = atoi(optarg);
  }
  sscanf(PLC_LOCALIO, "%*2c%u-%*u;%*2c%u", &first_input, &first_output);
  /* While the scan waits for the lock, the thread that has it gets the priority of the scan. */
  pthread_mutexattr_t attributes;
  pthread_mutexattr_init(&attributes);
  pthread_mutexattr_setprotocol(&attributes, PTHREAD_PRIO_INHERIT);
  pthread_mutex_init(&lock, &attributes);
  signal(SIGINT, stop);
  signal(SIGTERM, stop);
  printf("Modbus/TCP on %s:%d, a scan every %d ms\n", address, start_service(address, port), cycle);
  fflush(stdout);
  run(cycle * 1000000LL);
  return EXIT_SUCCESS;
}
