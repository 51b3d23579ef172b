// The border between the toolkit and C++: an entry that the toolkit calls ends every C++ exception, as the
// toolkit's own code has no way to pass one on. A plain C++ header.
#pragma once

#include <exception>
#include <utility>

namespace norvik::prefpane {

// Adds to the computer's log that an exception ended in that entry.
void logException(const char* entry, const std::exception& exception);

// Does what an entry of the toolkit does. An exception of C++ ends here and is logged; the pane goes on. All
// of them derive from the standard library's; an object that the toolkit itself has thrown goes on to whom it
// is for.
template <typename Body>
void atBorder(const char* entry, Body&& body) {
  try {
    std::forward<Body>(body)();
  } catch (const std::exception& exception) {
    logException(entry, exception);
  }
}

// The same for an entry with a result: what `body` returns, or `otherwise`.
template <typename Result, typename Body>
Result atBorder(const char* entry, Result otherwise, Body&& body) {
  atBorder(entry, [&] { otherwise = body(); });
  return otherwise;
}

}  // namespace norvik::prefpane
