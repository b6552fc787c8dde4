#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/translation.h"

namespace velc {

int check(const CommonOptions& common, const std::vector<std::string>& files) {
  const auto session = startSession(common);
  return analyse(*session, common, files) ? kSuccess : kProgramErrors;
}

}  // namespace velc
