// Messages of the plugin and of hosts.
#pragma once

#include <string>

#include "host/message.h"

namespace hostkit {

bool isError(const vel::VELMessage& message);
// An error of the host's own, which has no code.
vel::VELMessage errorAt(vel::TextLocation where, std::string text);
// For people: `error: TEXT [0xC0040]`, without the code where there is none.
std::string messageText(const vel::VELMessage& message);

}  // namespace hostkit
