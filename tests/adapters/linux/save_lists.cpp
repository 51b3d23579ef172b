// A program for tests: saves lists, or lines, to one file as the pane's computer does, and can be killed
// meanwhile.
//
//   norvik_save_lists ROOT PATH FIRST LAST
//     saves the lists with these numbers, of saved_list.h, in order; exit status 1 where one could not be
//     saved
//   norvik_save_lists ROOT PATH
//     writes two lines with a stream; exit status 1 where it cannot be opened, 2 where a write fails, 3 where
//     the closing does
#include <sys/resource.h>

#include <cstdlib>

#include "src/adapters/linux/property_list_files.h"
#include "src/adapters/posix/files.h"
#include "tests/adapters/linux/saved_list.h"

namespace {

int writeLines(norvik::PosixFiles files, const char* path) {
  const norvik::FileRef file = files.fopen(path, norvik::FileMode::writeBinary);
  if (file == nullptr) return 1;
  const bool written = files.fwrite("one\n", 4, file) == 4 && files.fwrite("two\n", 4, file) == 4;
  const bool closed = files.fclose(file) == 0;
  if (!written) return 2;
  return closed ? 0 : 3;
}

// What is measured at the end of a run, such as coverage, is not what a test limits.
int endWithoutLimit(int status) {
  rlimit limit{};
  ::getrlimit(RLIMIT_FSIZE, &limit);
  limit.rlim_cur = limit.rlim_max;
  ::setrlimit(RLIMIT_FSIZE, &limit);
  return status;
}

}  // namespace

int main(int count, char** words) {
  if (count == 3)
    return endWithoutLimit(writeLines(norvik::PosixFiles(norvik::RootFolder(words[1])), words[2]));
  if (count != 5) return 64;
  norvik::LinuxPropertyListFiles files{norvik::RootFolder(words[1]), "/Users/user"};
  bool saved = true;
  for (int number = std::atoi(words[3]); number <= std::atoi(words[4]); ++number)
    saved = files.writeToFile(norvik::savedList(number), words[2]) && saved;
  return endWithoutLimit(saved ? 0 : 1);
}
