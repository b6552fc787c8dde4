/* The clients of the soft PLC, in a thread of their own. It never waits for a client: what has
 * arrived of a request is kept until the rest comes. */
#include <arpa/inet.h>
#include <errno.h>
#include <modbus/modbus.h>
#include <poll.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/socket.h>
#include <time.h>
#include <unistd.h>

#include "soft_plc.h"

enum {
  MARKERS = 4096, /* the holding register of %MW0 */
  CLIENTS = 16,
  PATIENCE = 500, /* milliseconds that a request may take to arrive */
  COILS = 8 * VEL_MEMORY_I,
  REGISTERS = MARKERS + VEL_MEMORY_M / 2
};
_Static_assert(VEL_MEMORY_I <= 2 * MARKERS && VEL_MEMORY_Q <= 8192 &&
                   VEL_MEMORY_M <= 2 * (65536 - MARKERS),
               "Modbus numbers coils and registers with 16 bits");

static i64 milliseconds(void) {
  struct timespec time;
  clock_gettime(CLOCK_MONOTONIC, &time);
  return time.tv_sec * 1000LL + time.tv_nsec / 1000000;
}

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

/* Takes what a request has written into the tables, changed or not. */
static void take(const u8* request, const modbus_mapping_t* tables) {
  const int function = request[7], coil = function == 5 || function == 15;
  const int several = function == 15 || function == 16 || function == 23;
  if (!coil && !several && function != 6 && function != 22) return;
  const u8* const range = request + (function == 23 ? 12 : 8);
  const int first = range[0] << 8 | range[1];
  const int end = first + (several ? range[2] << 8 | range[3] : 1);
  pthread_mutex_lock(&lock);
  for (int i = first / 8; coil && i <= (end - 1) / 8; ++i) {
    write_byte(INPUTS + i, modbus_get_byte_from_bits(tables->tab_bits, 8 * i, 8));
  }
  for (int i = first; !coil && i < end; ++i) {
    if (i < MARKERS && 2 * i >= VEL_MEMORY_I) continue;
    const int at = i < MARKERS ? INPUTS + 2 * i : 2 * (i - MARKERS);
    write_byte(at, (u8)tables->tab_registers[i]);
    write_byte(at + 1, (u8)(tables->tab_registers[i] >> 8));
  }
  pthread_mutex_unlock(&lock);
}

struct client {
  u8 request[MODBUS_TCP_MAX_ADU_LENGTH];
  int size;  /* of the request, as far as it has arrived */
  i64 begun; /* when its first bytes came */
};

/* The least size of a request by its function. */
static int least_size(const u8* request) {
  const int function = request[7];
  if (function == 15 || function == 16) return 13 + request[12];
  if (function == 23) return 17 + request[16];
  return function == 22 ? 14 : function <= 6 ? 12 : 8;
}

/* Reads what has arrived, and never waits. Returns 1 when the request is complete, 0 as long as it
 * is not, and -1 if the client is gone or sends something else. */
static int receive(int socket, struct client* client) {
  if (client->size == 0) *client = (struct client){.begun = milliseconds()};
  for (;;) {
    u8* const request = client->request;
    const int begun = client->size < 6;
    const int wanted = 6 + (begun ? 0 : request[4] << 8 | request[5]);
    if (wanted > MODBUS_TCP_MAX_ADU_LENGTH) return -1;
    if (!begun && client->size == wanted) return wanted < least_size(request) ? -1 : 1;
    const ssize_t count =
        recv(socket, request + client->size, (size_t)(wanted - client->size), MSG_DONTWAIT);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) return 0;
    if (count <= 0) return -1;
    client->size += (int)count;
  }
}

/* Answers a request from a copy of the image, since sending may take long. Returns 0 if the client
 * is gone. */
static int answer(modbus_t* modbus, const struct client* client, modbus_mapping_t* tables) {
  enum { REFUSAL = 9 }; /* the size of an answer that tells an error */
  static u8 shown[IMAGE];
  show(tables, shown);
  const int sent = modbus_reply(modbus, client->request, client->size, tables);
  if (sent > REFUSAL) take(client->request, tables);
  return sent >= 0;
}

static modbus_t* modbus;
static int listener; /* the socket on which clients connect */
static int watchdog; /* see start_service */

/* Milliseconds until the watchdog or the patience with a client ends; -1 for never. */
static int pause_until(i64 heard, const struct client* clients, nfds_t count) {
  i64 end = watchdog == 0 ? INT64_MAX : heard + watchdog;
  for (nfds_t i = 1; i < count; ++i) {
    const i64 limit = clients[i].begun + PATIENCE;
    if (clients[i].size > 0 && limit < end) end = limit;
  }
  const i64 pause = end - milliseconds();
  return end == INT64_MAX ? -1 : pause < 0 ? 0 : (int)pause;
}

/* Returns 0 if the client has to go, or else sets `heard` to the time when it has asked something.
 */
static int serve_client(int socket, struct client* client, modbus_mapping_t* tables, i64* heard) {
  const int state = receive(socket, client);
  if (state == 0) return milliseconds() - client->begun < PATIENCE;
  if (state < 0) return 0;
  modbus_set_socket(modbus, socket);
  const int answered = answer(modbus, client, tables);
  client->size = 0;
  *heard = milliseconds();
  return answered;
}

static void* serve(void* unused) {
  static struct client clients[1 + CLIENTS]; /* beside their sockets */
  const int bits = 8 * VEL_MEMORY_Q, words = VEL_MEMORY_Q / 2;
  modbus_mapping_t* const tables = modbus_mapping_new(COILS, bits, REGISTERS, words);
  struct pollfd sockets[1 + CLIENTS] = {{listener, POLLIN, 0}};
  nfds_t count = 1;
  i64 heard = milliseconds();
  sigset_t signals;
  sigfillset(&signals); /* they end the sleep between the scans */
  pthread_sigmask(SIG_BLOCK, &signals, NULL);
  while (tables != NULL) {
    const int ready = poll(sockets, count, pause_until(heard, clients, count));
    if (ready < 0) continue;
    for (nfds_t i = count - 1; i > 0; --i) {
      if (sockets[i].revents == 0 && clients[i].size == 0) continue;
      if (serve_client(sockets[i].fd, &clients[i], tables, &heard)) continue;
      close(sockets[i].fd);
      sockets[i] = sockets[--count];
      clients[i] = clients[count];
    }
    if (watchdog != 0 && milliseconds() - heard >= watchdog) {
      clear_inputs();
      heard = milliseconds();
    }
    if (sockets[0].revents == 0) continue;
    const int client = accept(listener, NULL, NULL);
    if (client >= 0 && count > CLIENTS) close(client);
    if (client < 0 || count > CLIENTS) continue;
    setsockopt(client, SOL_SOCKET, SO_SNDTIMEO, &(struct timeval){0, 100000},
               sizeof(struct timeval));
    setsockopt(client, SOL_SOCKET, SO_KEEPALIVE, &(int){1}, sizeof(int));
    clients[count].size = 0;
    sockets[count++] = (struct pollfd){client, POLLIN, 0};
  }
  return unused;
}

int start_service(const char* address, int port, int watchdog_time) {
  struct sockaddr_in bound = {0};
  pthread_t thread;
  watchdog = watchdog_time;
  modbus = modbus_new_tcp(address, port);
  listener = modbus == NULL ? -1 : modbus_tcp_listen(modbus, CLIENTS);
  if (listener < 0 || pthread_create(&thread, NULL, serve, NULL) != 0) {
    fprintf(stderr, "soft-plc: %s:%d: %s\n", address, port, modbus_strerror(errno));
    exit(EXIT_FAILURE);
  }
  modbus_set_response_timeout(modbus, 0, 1); /* libmodbus sleeps so long before it refuses */
  getsockname(listener, (struct sockaddr*)&bound, &(socklen_t){sizeof bound});
  return ntohs(bound.sin_port);
}
