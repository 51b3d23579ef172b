# A build for the Mac: the preference pane and what it is made of. By Xcode's compiler on a Mac, or by clang with the kit that
# tests/mac/make_sdk makes. The preset "mac" says for which systems and processors.
set(NORVIK_WITH_GNUSTEP FALSE)
enable_language(OBJCXX)
# Other panes are in the same process: nothing is shown but what must be.
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_OBJCXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
