// The border between the toolkit and C++: an entry that the toolkit calls ends every C++ exception, as the
// toolkit's own code has no way to pass one on. A plain C++ header.
#pragma once

#include <functional>

namespace norvik::prefpane {

// Does what an entry of the toolkit does. An exception of C++ ends here and is added to the computer's log,
// with the entry; the pane goes on. All of them derive from the standard library's; an object that the
// toolkit itself has thrown goes on to whom it is for.
void atBorder(const char* entry, const std::function<void()>& body);

// The same for an entry with a result: what `body` returns, or `otherwise`.
template <typename Result, typename Body>
Result atBorder(const char* entry, Result otherwise, Body&& body) {
  atBorder(entry, [&] { otherwise = body(); });
  return otherwise;
}

}  // namespace norvik::prefpane
