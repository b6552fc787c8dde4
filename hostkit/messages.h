// Messages of the plugin and of hosts.
#pragma once

#include <string>

#include "host/message.h"

namespace hostkit {

bool isError(const vel::VELMessage& message);
// An error that the host itself reports. It has no code.
vel::VELMessage errorAt(vel::TextLocation where, std::string text);
// The message as users see it: `error: TEXT [0xC0040]`, without the brackets if it has no code.
std::string messageText(const vel::VELMessage& message);

}  // namespace hostkit
