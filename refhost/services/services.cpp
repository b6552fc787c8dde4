#include "refhost/services/services.h"

#include "host/generator.h"

namespace refhost {

// The caller may pass a temporary, so the text is kept here.
const std::string& Services::translate(const std::string& format) {
  return *formats_.insert(format).first;
}

}  // namespace refhost

namespace vel {

InternalInterface::~InternalInterface() = default;
GenClanAPI::~GenClanAPI() = default;
Generator::Generator(InternalInterface* services) : ii(services) {}
Generator::~Generator() = default;

}  // namespace vel
