// Newlib's, which names a parameter as clang names a kind of variable on a Mac. Own work, for compiling
// alone.
#pragma once

#pragma push_macro("__block")
#undef __block
#include_next <unistd.h>
#pragma pop_macro("__block")
