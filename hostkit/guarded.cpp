#include "hostkit/guarded.h"

#include <exception>

namespace hostkit {

std::string reasonOfException() {
  try {
    throw;
  } catch (const std::exception& exception) {
    const char* const text = exception.what();
    return text != nullptr && *text != '\0' ? text : "an exception without a text";
  } catch (...) {
    return "an exception that is no std::exception";
  }
}

}  // namespace hostkit
