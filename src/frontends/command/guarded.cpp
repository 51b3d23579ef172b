// Everything that was held is free again where the sentence is written, so there is memory for it. Should
// there be none, a constant is written.
#include "src/frontends/command/guarded.h"

#include <exception>
#include <new>
#include <ostream>

namespace norvik::command {

namespace {

constexpr const char* kNoMemory = "there is too little memory.";

ExitStatus failed(const Output& output, const std::string& sentence) {
  try {
    return finish(output, failure(FailureCode::software, sentence));
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
    return failed(output, kNoMemory);
  } catch (const std::exception& fault) {
    return failed(output, std::string("a fault of the program: ") + fault.what());
  }
}

}  // namespace norvik::command
