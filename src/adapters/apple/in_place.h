// Replacing the text of a file and keeping the file, with its owner, its mode and its other names.
#pragma once

#include <string>
#include <string_view>

namespace norvik {

// Writes the text over the file's and cuts the rest off afterwards, so that the file is at no instant empty;
// creates a file that is missing. Where it fails, the old text is put back, or the new file is removed.
bool replaceInPlace(const std::string& path, std::string_view text);

}  // namespace norvik
