// Everything that was held is free again where the sentence is written, so there is memory for it. Should
// there be none, a constant is written.
#include "src/frontends/command/guarded.h"

#include <exception>
#include <new>
#include <ostream>

#include "src/frontends/shared/language/language.h"

namespace norvik::command {

namespace {

constexpr const char* kNoMemory = english("there is too little memory.");

ExitStatus failed(const Output& output, const std::string& words) {
  try {
    return finish(output, failure(FailureCode::software, words));
  } catch (const std::bad_alloc&) {
    output.err << "norvikctl: " << kNoMemory << '\n';
    return kExitSoftware;
  }
}

}  // namespace

ExitStatus guarded(const Output& output, const std::function<ExitStatus()>& run) {
  try {
    return run();
  } catch (const std::bad_alloc&) {
    return failed(output, translated(kNoMemory));
  } catch (const std::exception& fault) {
    return failed(output, sentence("a fault of the program: {1}", {fault.what()}));
  }
}

}  // namespace norvik::command
