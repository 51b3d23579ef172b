// GNUstep's, whose inline functions end with a function of GNUstep's where a range is too long. Own work, for
// compiling alone.
#pragma once

#include <stdlib.h>

#define _NSRangeExceptionRaise abort
#include_next <Foundation/NSRange.h>
#undef _NSRangeExceptionRaise
