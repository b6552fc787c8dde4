/* The trace: the values of the traced variables behind each scan. */
#ifndef VELRUN_TRACE_H
#define VELRUN_TRACE_H

/* The trace goes to this file descriptor. Exits when there is no memory for a record. */
void vel_trace_start(int descriptor);

/* Writes a record: the elementary values of vel_run_traced in order, without gaps. It is written at
 * once, so that a scan that crashes loses none before it. Does nothing unless the trace has been
 * started. Returns 0 when it cannot be written. */
int vel_trace_scan(void);

#endif
