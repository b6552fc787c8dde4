/* Multiplexers. */
#ifndef VELRT_MUX_H
#define VELRT_MUX_H

#include "velrt/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* FC_MUX_...(n, k, input 0, ..., input n - 1): input `k`. A selector below 0 selects the
 * first input, one beyond the last selects the last. All inputs are evaluated, each once.
 * The result type can hold every value of the inputs' type, to which the caller casts it:
 *   FC_MUX_INT       BOOL, integers and bit strings up to 32 bits, TIME, DATE, TOD, DT
 *   FC_MUX_LONGLONG  every integer and bit string, LTIME
 *   FC_MUX_LONGREAL  REAL, LREAL
 * `k` may be of any integer type. */
#define FC_MUX_INT(n, k, ...) ((const i64[]){__VA_ARGS__}[vel_mux_index((n), (f64)(k))])
#define FC_MUX_LONGLONG(n, k, ...) ((const u64[]){__VA_ARGS__}[vel_mux_index((n), (f64)(k))])
#define FC_MUX_LONGREAL(n, k, ...) ((const f64[]){__VA_ARGS__}[vel_mux_index((n), (f64)(k))])

/* `k` is an f64 because every integer type converts to it without changing sign or order. The
 * conversion is exact for the number of every input. */
static inline u32 vel_mux_index(u32 n, f64 k) { return k <= 0 ? 0 : k < n ? (u32)k : n - 1; }

#ifdef __cplusplus
}
#endif

#endif
