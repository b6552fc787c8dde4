/* The tasks of a configuration. */
#ifndef VELRT_TASKS_H
#define VELRT_TASKS_H

#include "velrt/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A task and the program instances that run with it. The C of a configuration NAME defines a table
 * `NAME_tasks` of them, in the order in which they run when several are due; `run` is NULL in a row
 * behind the last. */
typedef struct {
  const char* name;   /* RESOURCE.TASK, or without a resource TASK; UTF-8 */
  i64 interval;       /* milliseconds from one run to the next; 0 if it is not periodic */
  u32 priority;       /* 0 is the most urgent; VEL_NO_TASK for instances without a task */
  u8 (*single)(void); /* reads the BOOL whose rising edges start a run; NULL for none */
  void (*run)(void);  /* runs the instances once, connected to their global variables */
} vel_task;

/* Behind all priorities: 0 to 65535. Such instances run in every scan. */
#define VEL_NO_TASK 65536

/* The state of a task; initially zero. */
typedef struct {
  u64 due;
  u8 single;
} vel_task_state;

/* One scan for a platform without preemption: runs the tasks of the table that are due, in its
 * order. `states` has an element for each, `now` is the time in milliseconds since the start, the
 * first time 0. A task is due
 *   - if SINGLE has been FALSE when it was last read, and is TRUE;
 *   - if SINGLE is FALSE or there is none, and a multiple of INTERVAL, 0 included, has been reached
 *     since the last call. If it was several, the task runs once.
 * SINGLE is read once in each scan, when the tasks before this one have run. */
void vel_tasks_run(const vel_task* tasks, vel_task_state* states, u64 now);

#ifdef __cplusplus
}
#endif

#endif
