// Build tool: prints the names in the registration table as C++ string literals. They are in
// order of registration, whereas the registry sorts them. Fails for an operator that has no row in
// hostkit/operator_traits.cpp, since hosts would take it for an operator of an add-on.
#include <cstdio>

#include "core/registration.h"
#include "hostkit/operator_traits.h"

int main() {
  int result = 0;
  for (const vel::Registration& row : vel::registrationTable()) {
    vel::forEachName(row, [&result](const std::string& name) {
      std::printf("\"%s\",\n", name.c_str());
      if (hostkit::operatorTraits(name).family != hostkit::OperatorFamily::Other) return;
      std::fprintf(stderr,
                   "operator %s has no row with its family in hostkit/operator_traits.cpp\n",
                   name.c_str());
      result = 1;
    });
  }
  return result;
}
