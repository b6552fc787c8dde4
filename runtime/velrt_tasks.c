#include "velrt/tasks.h"

static int is_due(const vel_task* task, vel_task_state* state, u64 now) {
  const u8 single = task->single != NULL && task->single();
  const int rises = single && !state->single;
  int periodic = 0;
  state->single = single;
  if (task->interval > 0 && now >= state->due) {
    state->due = (now / (u64)task->interval + 1) * (u64)task->interval;
    periodic = !single;
  }
  return rises || periodic || task->priority == VEL_NO_TASK;
}

void vel_tasks_run(const vel_task* tasks, vel_task_state* states, u64 now) {
  for (; tasks->run != NULL; ++tasks, ++states) {
    if (is_due(tasks, states, now)) tasks->run();
  }
}
