/* The program of the soft PLC, apart from all else, so that its names meet no others. Compile it
 * with PLC_SOURCE  the C of the program, in quotes PLC_INIT    its function NAME_init PLC_SCAN its
 * function NAME_scan, or PLC_TASKS, the table of a configuration */
#include PLC_SOURCE

void vel_plc_init(void);
void vel_plc_scan(u64 now);

void vel_plc_init(void) { PLC_INIT(); }

void vel_plc_scan(u64 now) {
#ifdef PLC_TASKS
  static vel_task_state states[sizeof PLC_TASKS / sizeof PLC_TASKS[0]];
  vel_tasks_run(PLC_TASKS, states, now);
#else
  (void)now;
  PLC_SCAN();
#endif
}
