// Validation of the device addresses that direct I/O operators take.
#pragma once

#include <cstddef>
#include <vector>

#include "host/ast.h"
#include "host/device_memory.h"
#include "host/message.h"
#include "operators/device/local_io.h"

namespace vel {

class InternalInterface;

// What the addresses of one invocation have in common.
struct DirectAddressContext {
  bool isInput;  // the kind wanted: input bits or output bits
  InternalInterface* ii;
  LocalIoRanges localIo;
  // How many messages may be in the list without the check failing: those that were
  // there before, and the warnings of the validation.
  std::size_t acceptedMessages;
};

// `parameter` is a device address of the kind wanted or, with `rejectKind`, anything
// but that. Fills `address`, which the caller hands over empty, when the text is an
// address at all. One that is outside the local range draws a warning only.
bool validateDirectAddress(DirectAddressContext& context, ASTNode* parameter, HeapAddress& address,
                           std::vector<VELMessage>& messages, bool rejectKind);

}  // namespace vel
