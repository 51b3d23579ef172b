// The one form of diagnostics.
#include "context.h"

#include <ostream>

namespace norvik {

void Context::complain(std::string_view sentence) const {
  err << "norvikctl: " << sentence << '\n';
}

}  // namespace norvik
