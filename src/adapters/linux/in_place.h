// Writes a whole text file in place: the same file, with its owner and mode, instead of another one that is
// moved over it. Knows nothing of what the text means, except that line feeds after its end mean nothing.
#pragma once

#include <string>
#include <string_view>

namespace norvik {

// Writes the text to the regular file at `path`, which is created where it is missing. At no instant is the
// file empty or cut, neither for a reader nor after a kill: it holds the old text or the new one, whole,
// though for a moment with line feeds behind its end. That holds for texts of up to 4096 bytes; a longer one
// is written in pieces of that size. A new file is empty for a moment. When this returns the text is on the
// disk.
//
// False where a step failed, from the opening to the closing; the old text is back then, unless the disk does
// not take it either, and a file that was created is gone. Never a signal: beyond the allowed size of a file,
// too, writing fails. Space is reserved first, so that a full disk shows before the file is touched. A pipe,
// a device or a file that may not be read is left alone. Of two who write at once the later one wins, whole.
// Blocks as the disk does. Throws std::bad_alloc, with the old text back.
bool writeInPlace(const std::string& path, std::string_view text);

}  // namespace norvik
