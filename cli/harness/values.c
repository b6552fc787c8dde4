#include "values.h"

static int is_nested(const vel_run_shape* element) {
  return element != NULL && (element->element != NULL || element->parts != NULL);
}

void vel_visit_bytes(const vel_run_shape* shape, void* variable, vel_bytes_visit visit) {
  char* const bytes = variable;
  if (shape->parts != NULL) {
    for (size_t i = 0; i < shape->count; ++i) {
      vel_visit_bytes(shape->parts[i].shape, bytes + shape->parts[i].offset, visit);
    }
  } else if (is_nested(shape->element)) {
    for (size_t i = 0; i < shape->count; ++i) {
      vel_visit_bytes(shape->element, bytes + i * shape->element->size, visit);
    }
  } else {
    visit(bytes, shape->size);
  }
}

size_t vel_count_bytes(const vel_run_shape* shape) {
  if (shape->parts == NULL) {
    return is_nested(shape->element) ? shape->count * vel_count_bytes(shape->element) : shape->size;
  }
  size_t sum = 0;
  for (size_t i = 0; i < shape->count; ++i) sum += vel_count_bytes(shape->parts[i].shape);
  return sum;
}
