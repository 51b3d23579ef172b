// The children of this process, as the system lists them: the only way to the process that a privileged
// launch has made, whose id the service does not return.
#pragma once

#include <sys/types.h>

#include <optional>
#include <vector>

namespace norvik {

// The children of this process that have the super-user's rights, ended ones that nobody has waited for
// included, by their ids. Empty where the system does not show them.
std::vector<pid_t> privilegedChildren();

// The one child that is in `after` and not in `before`; nothing where there is none or more than one, as none
// of them may then be taken for another's.
std::optional<pid_t> newChild(const std::vector<pid_t>& before, const std::vector<pid_t>& after);

}  // namespace norvik
