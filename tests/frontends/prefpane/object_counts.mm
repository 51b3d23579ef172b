// A library that is loaded into System Preferences before all others: when the program ends, it writes how
// many objects of each class there are to the file that the variable NORVIK_OBJECT_COUNTS names, a line for
// each.
#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#import <Foundation/NSDebug.h>
#import <objc/runtime.h>

namespace {

// Its launcher starts other programs, which load the library too.
const char* fileOfCounts() {
  return std::strcmp(program_invocation_short_name, "SystemPreferences") == 0
             ? std::getenv("NORVIK_OBJECT_COUNTS")
             : nullptr;
}

__attribute__((constructor)) void beginToCount() {
  if (fileOfCounts() != nullptr) GSDebugAllocationActive(YES);
}

__attribute__((destructor)) void writeCounts() {
  const char* name = fileOfCounts();
  std::FILE* file = name != nullptr ? std::fopen(name, "w") : nullptr;
  if (file == nullptr) return;
  Class* const all = GSDebugAllocationClassList();
  for (Class* one = all; *one != Nil; ++one)
    std::fprintf(file, "%s %d\n", class_getName(*one), GSDebugAllocationCount(*one));
  const struct mallinfo2 memory = mallinfo2();
  std::fprintf(file, "malloc %zu\n", memory.uordblks + memory.hblkhd);
  std::fclose(file);
}

}  // namespace
