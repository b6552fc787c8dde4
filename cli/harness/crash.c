#define _GNU_SOURCE
#include "crash.h"

#include <fcntl.h>
#include <link.h>
#include <signal.h>
#include <stddef.h>
#include <stdint.h>
#include <unistd.h>
#include <unwind.h>

enum { MOST_CALLS = VEL_CRASH_MOST_CALLS / 2, STACK_SIZE = 1 << 16 };

static struct {
  uint64_t last[MOST_CALLS]; /* of those behind the first, which are written at once */
  size_t count;              /* of all */
} calls;

static int report;
static void (*last_action)(const siginfo_t* cause);
static uint64_t base; /* by which addresses in memory exceed those in the file of the program */
static char stack[STACK_SIZE];

static int find_base(struct dl_phdr_info* object, size_t size, void* unused) {
  (void)size;
  (void)unused;
  base = object->dlpi_addr;
  return 1; /* the first object is the program */
}

static int write_address(uint64_t address) {
  return write(report, &address, sizeof address) == sizeof address;
}

static _Unwind_Reason_Code write_call(struct _Unwind_Context* context, void* unused) {
  (void)unused;
  int interrupted = 0;
  const uint64_t address = _Unwind_GetIPInfo(context, &interrupted);
  if (address == 0) return _URC_END_OF_STACK;
  /* A call returns behind its line, perhaps. */
  const uint64_t in_file = address - base - (interrupted ? 0 : 1);
  calls.last[calls.count++ % MOST_CALLS] = in_file;
  if (calls.count > MOST_CALLS) return _URC_NO_REASON;
  return write_address(in_file) ? _URC_NO_REASON : _URC_END_OF_STACK;
}

static void write_report(int number, siginfo_t* cause, void* context) {
  (void)context;
  size_t next = MOST_CALLS;
  _Unwind_Backtrace(write_call, NULL);
  /* A stack is exhausted by calls in between. */
  if (calls.count > 2 * MOST_CALLS) next = calls.count - MOST_CALLS;
  while (next < calls.count && write_address(calls.last[next % MOST_CALLS])) ++next;
  if (last_action != NULL) last_action(cause);
  raise(number); /* SA_RESETHAND: this ends the program */
}

void vel_crash_report(const char* path, void (*finish)(const siginfo_t* cause)) {
  static const int signals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGALRM};
  const stack_t alternate = {.ss_sp = stack, .ss_size = sizeof stack};
  struct sigaction action = {
      .sa_sigaction = write_report,
      .sa_flags = (int)(SA_SIGINFO | SA_RESETHAND | SA_NODEFER | SA_ONSTACK)};
  report = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (report < 0) return;
  last_action = finish;
  dl_iterate_phdr(find_base, NULL);
  sigaltstack(&alternate, NULL);
  sigemptyset(&action.sa_mask);
  for (size_t i = 0; i < sizeof signals / sizeof *signals; ++i) {
    sigaction(signals[i], &action, NULL);
  }
}
