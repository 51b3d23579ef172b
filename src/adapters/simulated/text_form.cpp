// Quoting of texts that may be missing, and decimal forms.
#include "src/adapters/simulated/text_form.h"

#include <cmath>

#include "src/server/mac/text/escape.h"
#include "src/server/mac/text/reals.h"

namespace norvik {

std::string quotedOrNull(const char* text) {
  return text == nullptr ? "null" : quoted(text);
}

std::string shortestForm(double number) {
  const double size = std::fabs(number);
  const bool plain = size == 0 || (size >= 1e-4 && size < 1e16);
  return realText(number, plain ? RealForm::plain : RealForm::exponent);
}

}  // namespace norvik
