// Newlib's, which declares a file's type otherwise than its stdio.h, and must not come first. Own work, for
// compiling alone.
#pragma once

#include <stdio.h>

#include_next <wchar.h>
