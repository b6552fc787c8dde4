// Validation of the device addresses passed to direct I/O operators.
#pragma once

#include <cstddef>
#include <vector>

#include "host/ast.h"
#include "host/device_memory.h"
#include "host/message.h"
#include "operators/device/local_io.h"

namespace vel {

class InternalInterface;

// Shared by the validations of all addresses of one invocation.
struct DirectAddressContext {
  bool isInput;  // the required kind: true for input bits, false for output bits
  InternalInterface* ii;
  LocalIoRanges localIo;
  // The check fails when the list has more messages than this: those that were there before,
  // and the warnings of the validation.
  std::size_t acceptedMessages;
};

// Checks that `parameter` is a device address of the required kind or, with `rejectKind`, that
// it is not. Parses any address into `address`, which has to be the empty address. An address
// outside the local range gets only a warning.
bool validateDirectAddress(DirectAddressContext& context, ASTNode* parameter, HeapAddress& address,
                           std::vector<VELMessage>& messages, bool rejectKind);

}  // namespace vel
