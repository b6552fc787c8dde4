// Build tool: prints the names that the registration table stands for, in its order, as C++
// string literals. The registry itself keeps them sorted. Refuses an operator of which hosts
// know nothing, for they would take it for one of an add-on.
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
