# Whether the toolkit of the pane's bundle is here, with a compiler for it: NORVIK_WITH_GNUSTEP. Not on builds by another
# compiler than GCC, which the toolkit's run time is made for.
find_program(GNUSTEP_CONFIG gnustep-config)
set(objective_compiler "")
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-prog-name=cc1objplus OUTPUT_VARIABLE objective_compiler
    OUTPUT_STRIP_TRAILING_WHITESPACE)
endif()
set(NORVIK_WITH_GNUSTEP FALSE)
if(GNUSTEP_CONFIG AND IS_ABSOLUTE "${objective_compiler}")
  set(NORVIK_WITH_GNUSTEP TRUE)
  set(CMAKE_OBJCXX_COMPILER ${CMAKE_CXX_COMPILER})
  enable_language(OBJCXX)
endif()
