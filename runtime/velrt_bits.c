#include <string.h>

#include "velrt/bits.h"

static void put(u8* byte, u32 mask, int set) { *byte = (u8)(set ? *byte | mask : *byte & ~mask); }

static int has_bit(const vel_bit_param* param, i64 bit) { return bit >= 0 && bit < param->bits; }

u8 getBitOfParam(const vel_bit_param* param, i64 bit) {
  if (!has_bit(param, bit)) return 0;
  return (((const u8*)param->data)[bit / 8] >> (bit % 8)) & 1;
}

void setBitOfParam(const vel_bit_param* param, i64 bit, u8 value) {
  if (has_bit(param, bit)) put((u8*)param->data + bit / 8, 1u << (bit % 8), value != 0);
}

void vel_fill_bits(u8* memory, u32 bytes, u32 a, u32 n, int set) {
  const u64 bits = (u64)bytes * 8;
  const u64 end = (u64)a + n < bits ? (u64)a + n : bits;
  if (a >= end) return;
  const u32 head = 0xFFu << (a % 8);      /* mask for the first byte */
  const u32 tail = (1u << (end % 8)) - 1; /* mask for the byte after the last whole one; may be 0 */
  u8* const first = memory + a / 8;
  u8* const last = memory + end / 8;
  if (first == last) {
    put(first, head & tail, set);
    return;
  }
  put(first, head, set);
  memset(first + 1, set ? 0xFF : 0, (size_t)(last - first - 1));
  if (tail != 0) put(last, tail, set);
}

void vel_fill_bytes(u8* memory, u32 bytes, u32 a, u32 n, u8 value) {
  if (a < bytes) memset(memory + a, value, n < bytes - a ? n : bytes - a);
}
