// A program for tests: saves lists to one file as the pane's computer does, and can be killed meanwhile.
//
//   norvik_save_lists ROOT PATH FIRST LAST     saves the lists with these numbers, of saved_list.h, in order;
//                                              exit status 1 where one could not be saved
#include <csignal>
#include <cstdlib>

#include "src/adapters/linux/property_list_files.h"
#include "tests/adapters/linux/saved_list.h"

int main(int count, char** words) {
  if (count != 5) return 64;
  norvik::LinuxPropertyListFiles files{norvik::RootFolder(words[1]), "/Users/user"};
  bool saved = true;
  for (int number = std::atoi(words[3]); number <= std::atoi(words[4]); ++number)
    saved = files.writeToFile(norvik::savedList(number), words[2]) && saved;
  return saved ? 0 : 1;
}
